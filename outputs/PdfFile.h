#pragma once

#include "mirvakcamera.h"

#include <QPixmap>
#include <QStringList>

#include <functional>
#include <vector>

class Job;

/// PDF files made by the camera library. Thread-safe: the library collects the pages of one file at a time.
namespace pdfFile {

struct Result
{
    QString path; ///< of the PDF: the one wished for or, when something has that name, the next free one
    QStringList unreadable; ///< pictures that cannot become pages
    int code = 0;           ///< one of MirvakResult; MIRVAK_OK: the file stands under its name, complete
};

/// How a PDF is made.
struct Form
{
    bool isArchival = false; ///< conforms to PDF/A-2b; its title is the name of the file
    MirvakPdfSheet sheet = MIRVAK_PDF_OWN_SIZE;
};

/// As the settings say.
Form wishedForm(MirvakPdfSheet sheet = MIRVAK_PDF_OWN_SIZE);

using Text = std::vector<MirvakPdfWord>; ///< of one page
using Texts = std::vector<Text>;         ///< one for each page, or none at all

/// Writes the pictures, one a page, to a new file `path`: all of them or, when one cannot be read, nothing.
/// Trouble is told in a line each on standard error. A `job` is told of each page; when it is stopped there
/// is no file, and the code is MIRVAK_STOPPED.
Result write(MirvakCamera& camera,
             const QStringList& pictures,
             const QString& path,
             Job* job = nullptr,
             const Form& form = {});

/// The same, but the new file takes the place of one of that name in one step, once it is complete. `mayTake`
/// is asked just before; when it says no, all stays as it was, and the code is MIRVAK_EXISTS.
Result replace(MirvakCamera& camera,
               const QStringList& pictures,
               const QString& path,
               Job* job,
               const Form& form,
               const Texts& texts = {},
               const std::function<bool()>& mayTake = {});

/// `folder` and the present second, or the next one for which there is no file.
QString pathIn(const QString& folder);

/// What stands for a PDF in the thumbnail strip. GUI thread only.
QPixmap icon();

} // namespace pdfFile

#pragma once

#include <QPixmap>
#include <QStringList>

class Job;
class MirvakCamera;

/// PDF files made by the camera library. Thread-safe: the library collects the pages of one file at a time.
namespace pdfFile {

struct Result
{
    QString path; ///< of the PDF: the one wished for or, when something has that name, the next free one
    QStringList unreadable; ///< pictures that cannot become pages
    int code = 0;           ///< one of MirvakResult; MIRVAK_OK: the file stands under its name, complete
};

/// Writes the pictures, one a page, to a new file `path`: all of them or, when one cannot be read, nothing.
/// Trouble is told in a line each on standard error. A `job` is told of each page; when it is stopped there
/// is no file, and the code is MIRVAK_STOPPED.
Result write(MirvakCamera& camera, const QStringList& pictures, const QString& path, Job* job = nullptr);

/// `folder` and the present second, or the next one for which there is no file.
QString pathIn(const QString& folder);

/// What stands for a PDF in the thumbnail strip. GUI thread only.
QPixmap icon();

} // namespace pdfFile

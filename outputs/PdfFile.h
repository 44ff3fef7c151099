#pragma once

#include <QPixmap>
#include <QStringList>

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
/// Trouble is told in a line each on standard error.
Result write(MirvakCamera& camera, const QStringList& pictures, const QString& path);

/// `folder` and the present second, or the next one for which there is no file.
QString pathIn(const QString& folder);

/// What stands for a PDF in the thumbnail strip. GUI thread only.
QPixmap icon();

} // namespace pdfFile

#pragma once

#include "PdfFile.h"

#include <QString>
#include <QStringList>

class Job;

/// A PDF with one picture on each lying A4 page, top left, as large as fits. Any thread.
namespace pictureSheets {

enum class End {
    done,
    unreadable, ///< the file holds the pages before that picture; without any there is no file
    notWritten, ///< there is no file, or the one before
    stopped,    ///< the same, as was wished
};

struct Result
{
    End end = End::done;
    int pages = 0; ///< in the file; of an unreadable picture: its index
};

/// Replaces a file of that name, once the new one is complete. Trouble is told in a line each on standard
/// error.
Result write(const QString& path, const QStringList& pictures, Job& job);

/// The same by the camera library, in the given form.
Result writeWith(MirvakCamera& camera,
                 const QString& path,
                 const QStringList& pictures,
                 const pdfFile::Form& form,
                 Job& job);

} // namespace pictureSheets

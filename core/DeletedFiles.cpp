#include "DeletedFiles.h"

#include "NewName.h"
#include "Temporary.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace {

constexpr int mostAttempts = 100;
constexpr size_t mostLocks = 256; // so that a thousand deleted pages leave the process its file handles

void complain(const char* what, const QString& path, int error)
{
    const QString reason = qt_error_string(error);
    std::fprintf(stderr, "cannot %s %s: %s\n", what, qUtf8Printable(path), qUtf8Printable(reason));
}

/// 0, or why it cannot be taken.
int refusal(const QString& path)
{
    struct stat status;
    if (lstat(QFile::encodeName(path).constData(), &status) != 0)
        return errno;
    return S_ISDIR(status.st_mode) ? EISDIR : 0;
}

/// A lock goes with the file to its other names, so there is no moment in which it is hidden but nobody's.
mirvak::UniqueFd lockOf(const QString& path)
{
    const int flags = O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    mirvak::UniqueFd file(::open(QFile::encodeName(path).constData(), flags));
    if (file.isValid())
        mirvak::lockTemporary(file.get());
    return file;
}

int move(const QString& from, const QString& to)
{
    return mirvak::moveToNewName(QFile::encodeName(from).toStdString(), QFile::encodeName(to).toStdString());
}

/// The third number keeps clear of the names under which files are being written.
QString hiddenBeside(const QString& path)
{
    static int counter = 0;
    return QStringLiteral("%1/%2%3-0-%4%5")
        .arg(QFileInfo(path).absolutePath(),
             QLatin1String(mirvak::temporaryBegin.data(), int(mirvak::temporaryBegin.size())),
             QString::number(getpid()),
             QString::number(counter++),
             QLatin1String(mirvak::temporaryEnd.data(), int(mirvak::temporaryEnd.size())));
}

/// "page (2).jpg"
QString numbered(const QString& path, int number)
{
    const QFileInfo file(path);
    const QString suffix = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix();
    return QStringLiteral("%1/%2 (%3)%4")
        .arg(file.absolutePath(), file.completeBaseName(), QString::number(number), suffix);
}

} // namespace

DeletedFiles::~DeletedFiles()
{
    for (const Taken& file : taken_) {
        if (::unlink(QFile::encodeName(file.hidden).constData()) != 0)
            complain("remove", file.hidden, errno);
    }
}

bool DeletedFiles::take(const QString& path)
{
    int error = refusal(path);
    if (error == 0) {
        mirvak::UniqueFd lock = taken_.size() < mostLocks ? lockOf(path) : mirvak::UniqueFd();
        QString hidden = hiddenBeside(path);
        error = move(path, hidden);
        for (int attempt = 1; error == EEXIST && attempt < mostAttempts; ++attempt) {
            hidden = hiddenBeside(path); // the name was left by a killed process of the same number
            error = move(path, hidden);
        }
        if (error == 0)
            taken_.push_back({path, hidden, std::move(lock)});
    }
    if (error != 0)
        complain("delete", path, error);
    return error == 0;
}

QString DeletedFiles::putBack(const QString& path)
{
    const auto file =
        std::find_if(taken_.rbegin(), taken_.rend(), [&](const Taken& taken) { return taken.path == path; });
    if (file == taken_.rend())
        return {};
    QString place = path;
    int error = move(file->hidden, place);
    for (int number = 2; error == EEXIST && number <= mostAttempts; ++number) {
        place = numbered(path, number);
        error = move(file->hidden, place);
    }
    if (error != 0) {
        complain("bring back", path, error);
        return {};
    }
    taken_.erase(std::prev(file.base()));
    return place;
}

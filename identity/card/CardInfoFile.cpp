#include "CardInfoFile.h"

#include "AtomicFile.h"
#include "UniqueFd.h"

#include <QBuffer>
#include <QFile>
#include <QPixmap>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

namespace {

using mirvak::AtomicFile;
using mirvak::UniqueFd;

constexpr int attempts = 20; // a second in all
constexpr std::chrono::milliseconds betweenAttempts(50);

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Against another writer, so that a row that could not be written whole is cut off and not the other one's.
int lock(int file)
{
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (::flock(file, LOCK_EX | LOCK_NB) == 0)
            return 0;
        if (errno != EWOULDBLOCK)
            return 0; // a file system without locks
        std::this_thread::sleep_for(betweenAttempts);
    }
    return EBUSY;
}

/// @return 0 or an error; the file then is as it was
int appendWhole(int file, const QByteArray& row)
{
    struct stat before
    {
    };
    if (::fstat(file, &before) != 0)
        return errno;
    if (!S_ISREG(before.st_mode))
        return EINVAL;
    const ssize_t written = ::write(file, row.constData(), static_cast<size_t>(row.size()));
    if (written == row.size() && ::fsync(file) == 0)
        return 0;
    const int error = written < 0 || written == row.size() ? errno : ENOSPC;
    if (::ftruncate(file, before.st_size) != 0)
        return errno;
    return error;
}

/// Whether the file still has the name: a program that saves it may have put another one in its place.
bool hasName(int file, const char* name)
{
    struct stat open
    {
    };
    struct stat named
    {
    };
    return ::fstat(file, &open) == 0 && ::stat(name, &named) == 0 && isSame(open, named);
}

AtomicFile::Commit write(const QString& path, mirvak::IfTaken ifTaken, const QByteArray& bytes)
{
    AtomicFile file(path.toStdString(), ifTaken, mirvak::Readers::owner);
    return file.write(bytes.constData(), static_cast<size_t>(bytes.size())) ? file.commit()
                                                                            : AtomicFile::Commit::failed;
}

} // namespace

bool CardInfoFile::fail(int error) const
{
    char text[128];
    std::fprintf(
        stderr, "cannot write %s: %s\n", qUtf8Printable(path_), strerror_r(error, text, sizeof text));
    return false;
}

bool CardInfoFile::makeFolder() const
{
    const QByteArray name = QFile::encodeName(folder());
    for (int end = name.indexOf('/', 1); end > 0; end = name.indexOf('/', end + 1))
        if (::mkdir(name.left(end).constData(), S_IRWXU) != 0 && errno != EEXIST)
            return fail(errno);
    return true;
}

bool CardInfoFile::append(const QString& row) const
{
    static const QString header =
        QStringLiteral("姓名,性别,民族,出生,住址,公民身份号码,签发机关,有效期限\r\n");
    const QByteArray name = QFile::encodeName(path_);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const UniqueFd file(
            ::open(name.constData(), O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        if (!file.isValid() && errno != ENOENT)
            return fail(errno);
        if (!file.isValid()) {
            if (!makeFolder())
                return false;
            const auto created = write(path_, mirvak::IfTaken::refuse, (header + row).toUtf8());
            if (created != AtomicFile::Commit::taken)
                return created == AtomicFile::Commit::done;
            continue; // another one was faster
        }
        const int busy = lock(file.get());
        if (busy == 0 && !hasName(file.get(), name.constData()))
            continue;
        const int error = busy == 0 ? appendWhole(file.get(), row.toUtf8()) : busy;
        return error == 0 || fail(error);
    }
    return fail(EBUSY);
}

bool CardInfoFile::savePortrait(const QPixmap& portrait, const QString& number) const
{
    if (portrait.isNull() || number.contains(QLatin1Char('/')))
        return false;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return portrait.save(&buffer, "JPG") &&
           write(folder() + number + QStringLiteral(".jpg"), mirvak::IfTaken::replace, bytes) ==
               AtomicFile::Commit::done;
}

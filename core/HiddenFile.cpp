#include "HiddenFile.h"

#include "MoveFile.h"
#include "Temporary.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <utility>

namespace {

constexpr int mostAttempts = 100;
constexpr int mostLocks = 256; // so that a thousand deleted pages leave the process its file handles
std::atomic<int> locks{0};

/// 0, or why it cannot be taken.
int refusal(const QString& path)
{
    struct stat status;
    if (lstat(QFile::encodeName(path).constData(), &status) != 0)
        return errno;
    return S_ISDIR(status.st_mode) ? EISDIR : 0;
}

int exchange(const QString& one, const QString& other)
{
    const QByteArray from = QFile::encodeName(one), to = QFile::encodeName(other);
    return ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_EXCHANGE) == 0 ? 0
                                                                                                   : errno;
}

} // namespace

HiddenFile::~HiddenFile()
{
    if (lock_.isValid())
        --locks;
    if (hidden_.isEmpty() || ::unlink(QFile::encodeName(hidden_).constData()) == 0)
        return;
    const QString reason = qt_error_string(errno);
    std::fprintf(stderr, "cannot remove %s: %s\n", qUtf8Printable(hidden_), qUtf8Printable(reason));
}

HiddenFile::HiddenFile(HiddenFile&& other) noexcept
    : hidden_(std::exchange(other.hidden_, QString())), lock_(std::move(other.lock_))
{
}

HiddenFile& HiddenFile::operator=(HiddenFile&& other) noexcept
{
    std::swap(hidden_, other.hidden_);
    std::swap(lock_, other.lock_);
    return *this;
}

/// The third number keeps clear of the names under which files are being written.
QString HiddenFile::nameBeside(const QString& path)
{
    static std::atomic<int> counter{0};
    return QStringLiteral("%1/%2%3-0-%4%5")
        .arg(QFileInfo(path).absolutePath(),
             QLatin1String(mirvak::temporaryBegin.data(), int(mirvak::temporaryBegin.size())),
             QString::number(getpid()),
             QString::number(counter++),
             QLatin1String(mirvak::temporaryEnd.data(), int(mirvak::temporaryEnd.size())));
}

/// A lock goes with the file to its other names.
void HiddenFile::lock()
{
    const bool hadOne = lock_.isValid();
    lock_.reset();
    const int flags = O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    if (hadOne || locks < mostLocks)
        lock_ = mirvak::UniqueFd(::open(QFile::encodeName(hidden_).constData(), flags));
    if (lock_.isValid())
        mirvak::lockTemporary(lock_.get());
    locks += int(lock_.isValid()) - int(hadOne);
}

int HiddenFile::hide(const QString& path)
{
    int error = refusal(path);
    if (error != 0)
        return error;
    hidden_ = path; // locked before it is hidden: there is no moment in which it is hidden but nobody's
    lock();
    error = EEXIST;
    for (int attempt = 0; error == EEXIST && attempt < mostAttempts; ++attempt) {
        hidden_ = nameBeside(path); // one may have been left by a killed process of the same number
        error = moveFile(path, hidden_);
    }
    if (error != 0)
        hidden_.clear();
    return error;
}

void HiddenFile::adopt(const QString& hidden)
{
    hidden_ = hidden;
    lock();
}

int HiddenFile::bringBack(const QString& place)
{
    const int error = moveFile(hidden_, place);
    if (error == 0)
        hidden_.clear();
    return error;
}

int HiddenFile::changePlaces(const QString& path)
{
    int error = exchange(hidden_, path);
    if (error == EINVAL || error == ENOSYS || error == ENOTSUP) {
        HiddenFile old;
        error = old.hide(path);
        if (error == 0)
            error = bringBack(path);
        if (error != 0) {
            if (!old.hidden_.isEmpty())
                old.bringBack(path);
            return error;
        }
        std::swap(hidden_, old.hidden_);
        std::swap(lock_, old.lock_);
        return 0;
    }
    if (error == 0)
        lock();
    return error;
}

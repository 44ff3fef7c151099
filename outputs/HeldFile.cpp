#include "HeldFile.h"

#include <QFile>

#include <fcntl.h>

namespace {

constexpr int highest = 512; // half of what a process usually may open: the rest has other uses

bool isSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

} // namespace

HeldFile::HeldFile(const QString& path)
    : path_(path), file_(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    if (file_.get() >= highest)
        file_.reset();
    exists_ = look(before_);
}

QString HeldFile::path() const
{
    return file_.isValid() ? QStringLiteral("/proc/self/fd/%1").arg(file_.get()) : path_;
}

bool HeldFile::isUnchanged() const
{
    struct stat now;
    return exists_ && look(now) && isSame(before_, now);
}

bool HeldFile::isSameAs(const HeldFile& other) const
{
    return exists_ && other.exists_ && isSame(before_, other.before_);
}

bool HeldFile::look(struct stat& about) const
{
    return (file_.isValid() ? ::fstat(file_.get(), &about)
                            : ::stat(QFile::encodeName(path_).constData(), &about)) == 0;
}

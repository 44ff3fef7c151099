#include "PictureEdits.h"

#include "ListedFiles.h"
#include "MoveFile.h"
#include "NamedFiles.h"
#include "ThumbnailList.h"
#include "mirvakcamera.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace {

constexpr int margin = 15; // px, as of captures
constexpr int mostAttempts = 100;

QString suffixOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix();
    return suffix.isEmpty() ? QString() : QLatin1Char('.') + suffix;
}

} // namespace

bool PictureEdits::Stamp::operator==(const Stamp& other) const
{
    return number == other.number && bytes == other.bytes && seconds == other.seconds &&
           nanoseconds == other.nanoseconds;
}

PictureEdits::Stamp PictureEdits::stampOf(const QString& path)
{
    struct stat about;
    if (::stat(QFile::encodeName(path).constData(), &about) != 0)
        return {};
    return {about.st_ino, about.st_size, about.st_mtim.tv_sec, about.st_mtim.tv_nsec};
}

PictureEdits::PictureEdits(ThumbnailList& list, ListedFiles& files, QObject* parent)
    : QObject(parent), list_(list), files_(files)
{
}

PictureEdits::~PictureEdits() = default;

bool PictureEdits::isPicture(const QString& path)
{
    static const QStringList suffixes{
        QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("png"), QStringLiteral("bmp")};
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

void PictureEdits::turn(const QString& path, int quarters)
{
    ask(path, [=](const char* from, const char* to) {
        return MirvakCamera::MirvakPicture_Turn(from, to, quarters);
    });
}

void PictureEdits::straighten(const QString& path)
{
    ask(path, [](const char* from, const char* to) {
        return MirvakCamera::MirvakPicture_Straighten(from, to, margin);
    });
}

void PictureEdits::cut(const QString& path, const Corners& corners)
{
    ask(path, [corners](const char* from, const char* to) {
        MirvakPointF points[4];
        std::transform(corners.begin(), corners.end(), std::begin(points), [](const QPointF& corner) {
            return MirvakPointF{float(corner.x()), float(corner.y())};
        });
        return MirvakCamera::MirvakPicture_Cut(from, to, points);
    });
}

void PictureEdits::undo(const QString& path)
{
    if (canUndo(path))
        ask(path, nullptr);
}

bool PictureEdits::canUndo(const QString& path) const
{
    return steps_.count(path) != 0 || isBusy(path);
}

bool PictureEdits::isBusy(const QString& path) const
{
    return std::any_of(jobs_.begin(), jobs_.end(), [&](const Job& job) { return job.path == path; });
}

void PictureEdits::forget(const QString& path)
{
    steps_.erase(path);
    const auto waiting = jobs_.begin() + (isWorking_ ? 1 : 0);
    jobs_.erase(std::remove_if(waiting, jobs_.end(), [&](const Job& job) { return job.path == path; }),
                jobs_.end());
}

void PictureEdits::ask(const QString& path, Write write)
{
    if (list_.rowOfExactly(path) < 0 || (write && !isPicture(path)))
        return;
    jobs_.push_back({path, std::move(write), {}});
    list_.setBusy(path, true);
    startNext();
    Q_EMIT changed(path);
}

void PictureEdits::startNext()
{
    while (!isWorking_ && !jobs_.empty()) {
        Job& job = jobs_.front();
        if (!job.write) {
            const QString path = job.path;
            jobs_.pop_front();
            list_.setBusy(path, isBusy(path));
            takeBack(path);
            continue;
        }
        job.before = stampOf(job.path);
        isWorking_ = true;
        // Whoever holds it last removes the file that nobody wants any more.
        const auto made = std::make_shared<HiddenFile>();
        const bool isStarted =
            workers_.start([this, path = job.path, write = job.write, held = made]() mutable {
                const int code = make(path, write, *held);
                QMetaObject::invokeMethod(
                    this,
                    [this, code, result = std::move(held)] { finish(code, *result); },
                    Qt::QueuedConnection);
            });
        if (!isStarted)
            finish(MIRVAK_NO_MEMORY, *made);
    }
}

int PictureEdits::make(const QString& path, const Write& write, HiddenFile& made)
{
    int code = MIRVAK_EXISTS; // a name may have been left by a killed process of the same number
    for (int attempt = 0; code == MIRVAK_EXISTS && attempt < mostAttempts; ++attempt) {
        const QString hidden = HiddenFile::nameBeside(path);
        code = write(QFile::encodeName(path).constData(), QFile::encodeName(hidden).constData());
        if (code == MIRVAK_OK)
            made.adopt(hidden);
    }
    return code;
}

void PictureEdits::finish(int code, HiddenFile& made)
{
    const Job job = std::move(jobs_.front());
    jobs_.pop_front();
    isWorking_ = false;
    list_.setBusy(job.path, isBusy(job.path));
    if (list_.rowOfExactly(job.path) >= 0) {
        if (code == MIRVAK_OK)
            put(job, made);
        else if (code == MIRVAK_NOT_FOUND)
            Q_EMIT noticed(tr("%1 is straight already.").arg(namedFiles({job.path})));
        else
            Q_EMIT noticed(tr("%1 could not be changed.").arg(namedFiles({job.path})));
    }
    startNext();
    Q_EMIT changed(job.path);
}

void PictureEdits::put(const Job& job, HiddenFile& made)
{
    if (!(stampOf(job.path) == job.before))
        Q_EMIT noticed(
            tr("%1 was changed by another program meanwhile and stays so.").arg(namedFiles({job.path})));
    else if (swap(job.path, made))
        steps_[job.path].push_back({QString(), std::move(made), stampOf(job.path)});
}

/// The listed file and the hidden one change places.
bool PictureEdits::swap(const QString& path, HiddenFile& other)
{
    files_.forget(path); // its own watch would still be that of the old one
    const int error = other.changePlaces(path);
    files_.follow(path);
    files_.check(path);
    if (error != 0) {
        std::fprintf(
            stderr, "cannot change %s: %s\n", qUtf8Printable(path), qUtf8Printable(qt_error_string(error)));
        Q_EMIT noticed(tr("%1 could not be changed.").arg(namedFiles({path})));
    }
    return error == 0;
}

void PictureEdits::takeBack(const QString& path)
{
    const auto found = steps_.find(path);
    if (found == steps_.end())
        return;
    Step& last = found->second.back();
    QString now = path;
    if (!last.oldPath.isEmpty()) {
        now = last.oldPath;
        if (!giveName(path, now))
            return;
    } else if (!(stampOf(path) == last.after)) {
        Q_EMIT noticed(
            tr("%1 was changed by another program meanwhile and stays so.").arg(namedFiles({path})));
        return;
    } else if (!swap(path, last.before)) {
        return;
    }
    std::vector<Step>& steps = steps_[now];
    steps.pop_back();
    if (steps.empty())
        steps_.erase(now);
    Q_EMIT changed(now);
}

QString PictureEdits::objection(const QString& path, const QString& newPath, const QString& name) const
{
    if (name.isEmpty())
        return tr("A file needs a name.");
    if (name.contains(QLatin1Char('/')) || name.startsWith(QLatin1Char('.')))
        return tr("A name may not begin with a dot or contain a slash.");
    const int row = list_.rowOf(newPath);
    if (row >= 0 && row != list_.rowOfExactly(path))
        return tr("There is already a file of the name %1.").arg(namedFiles({newPath}));
    return {};
}

bool PictureEdits::rename(const QString& path, const QString& name)
{
    const QString suffix = suffixOf(path);
    QString base = name.trimmed();
    if (!suffix.isEmpty() && base.endsWith(suffix, Qt::CaseInsensitive))
        base.chop(suffix.size());
    const QString newPath = QFileInfo(path).absolutePath() + QLatin1Char('/') + base + suffix;
    if (newPath == path || list_.rowOfExactly(path) < 0)
        return true;
    const QString objected = objection(path, newPath, base);
    if (!objected.isEmpty()) {
        Q_EMIT noticed(objected);
        return false;
    }
    if (isBusy(path) || !giveName(path, newPath))
        return false;
    steps_[newPath].push_back({path, HiddenFile(), Stamp()});
    Q_EMIT changed(newPath);
    return true;
}

bool PictureEdits::giveName(const QString& path, const QString& newPath)
{
    const int error = moveFile(path, newPath);
    if (error == EEXIST)
        Q_EMIT noticed(tr("There is already a file of the name %1.").arg(namedFiles({newPath})));
    else if (error != 0)
        Q_EMIT noticed(tr("%1 could not be renamed.").arg(namedFiles({path})));
    if (error != 0)
        return false;
    files_.forget(path);
    list_.renameEntry(path, newPath);
    files_.follow(newPath);
    files_.check(newPath);
    if (const auto kept = steps_.find(path); kept != steps_.end()) {
        steps_[newPath] = std::move(kept->second);
        steps_.erase(kept);
    }
    return true;
}

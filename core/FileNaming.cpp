#include "FileNaming.h"

#include "Settings.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>

namespace {

// A folder that cannot be listed, and one that ignores case, are searched name by name.
constexpr int mostNames = 100'000;
const QString secondStamp = QStringLiteral("yyyyMMddhhmmss");
const QString millisecondStamp = QStringLiteral("yyyyMMddhhmmsszzz");

/// Nothing for a text that is no number, or one without a successor.
std::optional<qint64> countable(const QString& text)
{
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber && number < std::numeric_limits<qint64>::max() ? std::optional(number) : std::nullopt;
}

/// The number between the last underscore and the last dot.
qint64 serialNumber(const QString& fileName)
{
    const int from = fileName.lastIndexOf(QLatin1Char('_')) + 1;
    const int to = fileName.lastIndexOf(QLatin1Char('.'));
    return to > from ? countable(fileName.mid(from, to - from)).value_or(0) : 0;
}

/// The next moment, for a name that is nothing but a time.
QString nextStamp(const QString& name, const QString& format, int milliseconds)
{
    QDateTime time = QDateTime::fromString(name, format);
    if (name.size() != format.size() || !time.isValid())
        return QString();
    time.setTimeSpec(Qt::UTC); // where no hour comes twice
    return time.addMSecs(milliseconds).toString(format);
}

/// The number at the end counted up, with as many digits as it had.
QString nextNumber(const QString& name)
{
    int digits = 0;
    while (digits < name.size() && name[name.size() - 1 - digits].isDigit())
        ++digits;
    const auto number = countable(name.right(digits));
    if (!number)
        return name + QStringLiteral("_1");
    return name.chopped(digits) + QStringLiteral("%1").arg(*number + 1, digits, 10, QLatin1Char('0'));
}

QString nextName(const QString& name)
{
    for (const auto& next : {nextStamp(name, secondStamp, 1000), nextStamp(name, millisecondStamp, 1)}) {
        if (!next.isEmpty())
            return next;
    }
    return nextNumber(name);
}

QString pathAfter(const QString& path)
{
    const QFileInfo about(path);
    const QString extension = about.suffix();
    const QString next = about.path() + QLatin1Char('/') + nextName(about.completeBaseName());
    return extension.isEmpty() ? next : next + QLatin1Char('.') + extension;
}

bool isTaken(const QString& path)
{
    const QFileInfo about(path);
    return about.exists() || about.isSymLink(); // a link to nothing has a name too
}

} // namespace

QString FileNaming::directory() const
{
    QString directory = settings::savePath(settings_);
    if (settings::createDirByDate.read(settings_))
        directory += QLatin1Char('/') + QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    return directory;
}

QString FileNaming::targetDirectory() const
{
    QString directory = this->directory();
    if (QDir(directory).exists() || QDir().mkdir(directory))
        return directory;
    std::fprintf(
        stderr, "capture: the folder %s does not exist and cannot be made\n", qUtf8Printable(directory));
    return QString();
}

QString FileNaming::getImagePath() const
{
    const QString directory = targetDirectory();
    if (directory.isEmpty())
        return QString();
    const QString extension = getNameFormat();
    if (settings::namingRules.read(settings_) == 1) {
        const QString time = QDateTime::currentDateTime().toString(millisecondStamp);
        return freePath(QStringLiteral("%1/%2.%3").arg(directory, time, extension));
    }
    const QString prefix = safePrefix(settings::namingPrefix.read(settings_));
    const qint64 index = getNameIndex(directory, prefix, extension);
    const QString number = QStringLiteral("%1").arg(index, 3, 10, QLatin1Char('0'));
    return freePath(QStringLiteral("%1/%2_%3.%4").arg(directory, prefix, number, extension));
}

QString FileNaming::stampedPath(const QString& folder, const QString& extension)
{
    const QString now = QDateTime::currentDateTime().toString(secondStamp);
    return freePath(QStringLiteral("%1/%2.%3").arg(folder, now, extension));
}

QString FileNaming::freePath(QString path)
{
    for (int names = 0; names < mostNames && isTaken(path); ++names)
        path = pathAfter(path);
    return path;
}

QString FileNaming::nextPath(const QString& path)
{
    return freePath(pathAfter(path));
}

qint64 FileNaming::getNameIndex(const QString& directory, const QString& prefix, const QString& extension)
{
    qint64 highest = -1;
    const QStringList names = QDir(directory).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
    for (const QString& name : names) {
        if (name.startsWith(prefix) && name.contains(extension))
            highest = std::max(highest, serialNumber(name));
    }
    return highest + 1;
}

QString FileNaming::getNameFormat() const
{
    switch (settings::imageFormat.read(settings_)) {
    case 1:
        return QStringLiteral("png");
    case 2:
        return QStringLiteral("bmp");
    default:
        return QStringLiteral("jpg");
    }
}

QString FileNaming::safePrefix(const QString& prefix)
{
    static const QRegularExpression forbidden(QStringLiteral(R"([\\/:*?"<>|\x00-\x1f])"));
    QString safe = prefix;
    safe.remove(forbidden);
    while (safe.startsWith(QLatin1Char('.')))
        safe.remove(0, 1);
    return safe.isEmpty() && !prefix.isEmpty() ? QStringLiteral("IMAGE") : safe;
}

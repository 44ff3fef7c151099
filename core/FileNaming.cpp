#include "FileNaming.h"

#include "Settings.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <limits>

namespace {

/// The number between the last underscore and the last dot.
int serialNumber(const QString& fileName)
{
    const int from = fileName.lastIndexOf(QLatin1Char('_')) + 1;
    const int to = fileName.lastIndexOf(QLatin1Char('.'));
    bool isNumber = false;
    const int number = to > from ? fileName.mid(from, to - from).toInt(&isNumber) : 0;
    // The largest number has no successor; such a name is nobody's serial number.
    return isNumber && number < std::numeric_limits<int>::max() ? number : 0;
}

} // namespace

QString FileNaming::targetDirectory() const
{
    QString directory = settings::savePath(settings_);
    if (settings::createDirByDate.read(settings_))
        directory += QLatin1Char('/') + QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
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
        const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmsszzz"));
        return QStringLiteral("%1/%2.%3").arg(directory, time, extension);
    }
    const QString prefix = safePrefix(settings::namingPrefix.read(settings_));
    const int index = getNameIndex(directory, prefix, extension);
    const QString number = QStringLiteral("%1").arg(index, 3, 10, QLatin1Char('0'));
    return QStringLiteral("%1/%2_%3.%4").arg(directory, prefix, number, extension);
}

QString FileNaming::stampedPath(const QString& folder, const QString& extension)
{
    const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss"));
    return QStringLiteral("%1/%2.%3").arg(folder, now, extension);
}

int FileNaming::getNameIndex(const QString& directory, const QString& prefix, const QString& extension)
{
    int highest = -1;
    const QStringList names = QDir(directory).entryList(QDir::Files, QDir::Unsorted);
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
    return safe.isEmpty() && !prefix.isEmpty() ? QStringLiteral("IMAGE") : safe;
}

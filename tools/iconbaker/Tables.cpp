#include "Tables.h"

#include <QFile>
#include <QStringList>

#include <stdexcept>

namespace {

[[noreturn]] void refuse(const QString& path, int line, const QString& why)
{
    throw std::runtime_error(QStringLiteral("%1:%2: %3").arg(path).arg(line).arg(why).toStdString());
}

// Plain commas, no quoting: neither a name nor a caption holds a comma.
QVector<QStringList> readCells(const QString& path, int columns)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw std::runtime_error((path + QStringLiteral(": ") + file.errorString()).toStdString());
    QVector<QStringList> rows;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const QStringList cells = line.split(QLatin1Char(','));
        if (cells.size() != columns || cells.contains(QString()))
            refuse(path, rows.size() + 1, QStringLiteral("%1 filled cells expected").arg(columns));
        rows.append(cells);
    }
    if (rows.size() < 2)
        refuse(path, rows.size(), QStringLiteral("no rows"));
    return rows;
}

} // namespace

QVector<PlainImage> readImages(const QString& path)
{
    const QVector<QStringList> rows = readCells(path, 6);
    QVector<PlainImage> images;
    for (int row = 1; row < rows.size(); ++row) {
        const QStringList& cell = rows[row];
        const PlainImage image{
            cell[0], cell[1], cell[2], QSize(cell[3].toInt(), cell[4].toInt()), cell[5].toInt()};
        if (image.size.isEmpty() || image.iconHeight < 1 || image.iconHeight > image.size.height())
            refuse(path, row + 1, QStringLiteral("sizes do not fit"));
        images.append(image);
    }
    return images;
}

Captions readCaptions(const QString& path)
{
    const QVector<QStringList> rows = readCells(path, 7);
    Captions captions;
    captions.languages = rows[0].mid(2).toVector();
    for (int row = 1; row < rows.size(); ++row)
        captions.buttons.append({rows[row][0], rows[row][1], rows[row].mid(2).toVector()});
    return captions;
}

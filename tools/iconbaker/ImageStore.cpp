#include "ImageStore.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>
#include <QVector>

#include <optional>
#include <stdexcept>
#include <utility>

namespace {

// Icons are one colour in up to 256 strengths: a palette holds them without loss at a third of the size.
std::optional<QImage> withPalette(const QImage& picture)
{
    QImage indexed(picture.size(), QImage::Format_Indexed8);
    QVector<QRgb> colours;
    QHash<QRgb, uchar> indexOf;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        uchar* to = indexed.scanLine(y);
        for (int x = 0; x < picture.width(); ++x) {
            auto known = indexOf.constFind(from[x]);
            if (known == indexOf.constEnd()) {
                if (colours.size() == 256)
                    return std::nullopt;
                known = indexOf.insert(from[x], static_cast<uchar>(colours.size()));
                colours.append(from[x]);
            }
            to[x] = *known;
        }
    }
    indexed.setColorTable(colours);
    return indexed;
}

[[noreturn]] void refuse(const QString& path, const QString& why)
{
    throw std::runtime_error((path + QStringLiteral(": ") + why).toStdString());
}

} // namespace

ImageStore::ImageStore(QString folder) : folder_(std::move(folder)) {}

void ImageStore::add(const QString& group, const QString& name, int scale, const QImage& image)
{
    const QString suffix = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
    const QString file = QStringLiteral("images/%1/images/%1/%2%3.png").arg(group, name, suffix);
    const QString path = folder_ + QLatin1Char('/') + file;
    if (files_.contains(file))
        refuse(path, QStringLiteral("made twice"));
    if (!QDir().mkpath(QFileInfo(path).path()))
        refuse(path, QStringLiteral("no folder"));

    const QImage straight = image.convertToFormat(QImage::Format_ARGB32);
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || !withPalette(straight).value_or(straight).save(&out, "PNG") ||
        !out.commit())
        refuse(path, out.errorString());
    files_.append(file);
}

void ImageStore::writeCollection(const QString& path) const
{
    QByteArray text = "<RCC>\n<qresource prefix=\"/\">\n";
    for (const QString& file : files_)
        text += "<file>" + file.toUtf8() + "</file>\n";
    text += "</qresource>\n</RCC>\n";
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(text) != text.size() || !out.commit())
        refuse(path, out.errorString());
}

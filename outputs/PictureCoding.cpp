#include "PictureCoding.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>

#include <cmath>

namespace {

constexpr int writersQuality = 94; // as the writer of Qt 5.15 codes
constexpr double leastRatio = 43;  // dB
constexpr int side = 128;          // px of a sampled block; JPEG codes squares of 16, so blocks stay aligned
constexpr int blocksAcross = 12;   // of the sheet of samples

/// Blocks from all over the picture, put together into one sheet.
QImage samplesOf(const QImage& picture)
{
    if (picture.width() <= side * blocksAcross && picture.height() <= side * blocksAcross)
        return picture.convertToFormat(QImage::Format_RGB32);
    const QSize block(qMin(side, picture.width()), qMin(side, picture.height()));
    QImage sheet(block * blocksAcross, QImage::Format_RGB32);
    QPainter painter(&sheet);
    for (int row = 0; row < blocksAcross; ++row) {
        for (int column = 0; column < blocksAcross; ++column) {
            const int x = (picture.width() - block.width()) * column / (blocksAcross - 1) / 16 * 16;
            const int y = (picture.height() - block.height()) * row / (blocksAcross - 1) / 16 * 16;
            painter.drawImage(
                QPoint(column * block.width(), row * block.height()), picture, QRect(QPoint(x, y), block));
        }
    }
    return sheet;
}

QImage throughJpeg(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(writersQuality);
    if (!writer.write(picture))
        return {};
    return QImage::fromData(bytes, "jpeg").convertToFormat(QImage::Format_RGB32);
}

double meanSquareError(const QImage& a, const QImage& b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto* one = a.constScanLine(y);
        const auto* other = b.constScanLine(y);
        long line = 0;
        for (int i = 0; i < a.width() * 4; ++i) {
            const int apart = one[i] - other[i];
            line += apart * apart;
        }
        sum += double(line);
    }
    return sum / (3.0 * a.width() * a.height()); // the fourth byte is the same in both
}

} // namespace

bool pictureCoding::survivesJpeg(const QImage& picture)
{
    const QImage samples = samplesOf(picture);
    const QImage coded = throughJpeg(samples);
    if (coded.size() != samples.size())
        return false;
    const double error = meanSquareError(samples, coded);
    return error == 0 || 10 * std::log10(255 * 255 / error) >= leastRatio;
}

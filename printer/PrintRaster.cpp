#include "PrintRaster.h"

#include <QImageReader>
#include <QPainter>

namespace {

/// The height that belongs to the paper's width, in lines; at least one, so that a hairline stays one.
double scaledHeight(const QSize& size)
{
    return qMax(1.0, double(size.height()) * printRaster::width / size.width());
}

/// In colours that say the same to everybody: without what shines through, and without a table of two
/// colours, which might mean by 1 white as well as black.
QImage onWhitePaper(const QImage& image)
{
    if (!image.hasAlphaChannel() && image.depth() > 1)
        return image;
    QImage paper(image.size(), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(0, 0, image);
    return paper;
}

} // namespace

QImage printRaster::read(const QString& path, PrintResult& problem)
{
    QImageReader reader(path);
    reader.setAutoTransform(true); // upright, as the camera was held
    reader.setDecideFormatFromContent(true);
    QImage image = reader.read();
    problem = PrintResult::Unreadable;
    if (image.isNull())
        return {};
    if (image.width() != width) {
        const double height = scaledHeight(image.size());
        if (height <= heightAtMost)
            image = image.scaled(width, int(height), Qt::IgnoreAspectRatio, Qt::FastTransformation);
        else
            problem = PrintResult::TooHigh;
    }
    if (image.height() > heightAtMost)
        problem = PrintResult::TooHigh;
    if (image.isNull() || problem == PrintResult::TooHigh)
        return {};
    problem = PrintResult::Sent;
    return onWhitePaper(image).convertToFormat(QImage::Format_Mono);
}

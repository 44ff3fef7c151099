#include "ImagePrint.h"

#include <QImage>
#include <QPainter>
#include <QPrinter>

namespace ImagePrint {

void orient(QPrinter& printer, const QImage& image)
{
    printer.setPageOrientation(image.width() > image.height() ? QPageLayout::Landscape
                                                              : QPageLayout::Portrait);
}

bool print(QPrinter& printer, const QImage& image)
{
    QPainter painter;
    if (image.isNull() || !painter.begin(&printer))
        return false;
    const QSize page(painter.viewport().size());
    const QSize size = image.size().scaled(page, Qt::KeepAspectRatio);
    const QRect target(QPoint((page.width() - size.width()) / 2, (page.height() - size.height()) / 2), size);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image);
    return painter.end() && printer.printerState() != QPrinter::Error;
}

} // namespace ImagePrint

// Writes photographs of open books with their truth: see the README.
//   bookspreads FOLDER [COUNT [SEED [WIDTHxHEIGHT]]]
#include "Output.h"
#include "Spread.h"

#include <QGuiApplication>
#include <QStringList>

#include <cstdio>
#include <exception>

using deskpictures::Spread;
using deskpictures::SpreadPage;

namespace {

constexpr double gridMm = 5;

QByteArray gridOf(const Spread& spread)
{
    QByteArray lines = "page,page_x_mm,page_y_mm,x,y\n";
    for (int side = 0; side < (spread.right ? 2 : 1); ++side)
        for (int row = 0; row * gridMm <= spread.pageMm.height; ++row)
            for (int column = 0; column * gridMm <= spread.pageMm.width; ++column) {
                const double x = column * gridMm;
                const double y = row * gridMm;
                const cv::Point2d seen = spread.toPhoto(side == 1, {x, y});
                lines += QStringLiteral("%1,%2,%3,%4,%5\n")
                             .arg(QLatin1String(side ? "right" : "left"))
                             .arg(x)
                             .arg(y)
                             .arg(seen.x, 0, 'f', 2)
                             .arg(seen.y, 0, 'f', 2)
                             .toUtf8();
            }
    return lines;
}

void writePage(const QString& stem, const SpreadPage& page)
{
    deskpictures::writePng(stem + QStringLiteral(".png"), page.page.flat.image);
    QByteArray text;
    for (const deskpictures::TextRow& row : page.page.rows)
        text += row.words.toUtf8() + '\n';
    deskpictures::writeText(stem + QStringLiteral(".txt"), text);
    if (!page.fingers.empty())
        deskpictures::writePng(stem + QStringLiteral("-fingers.png"),
                               QImage(page.fingers.data,
                                      page.fingers.cols,
                                      page.fingers.rows,
                                      static_cast<int>(page.fingers.step),
                                      QImage::Format_Grayscale8));
}

void write(const QString& stem, const Spread& spread)
{
    deskpictures::writeJpeg(stem + QStringLiteral(".jpg"), spread.photo, 95);
    writePage(stem + QStringLiteral("-left"), spread.left);
    if (spread.right)
        writePage(stem + QStringLiteral("-right"), *spread.right);
    deskpictures::writeText(stem + QStringLiteral("-grid.csv"), gridOf(spread));
    std::printf("%s: %s, %s\n", qPrintable(stem), spread.name.c_str(), spread.bend.c_str());
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        std::fputs("usage: bookspreads FOLDER [COUNT [SEED [WIDTHxHEIGHT]]]\n", stderr);
        return 2;
    }
    const int count = arguments.value(2, QStringLiteral("6")).toInt();
    const unsigned seed = arguments.value(3, QStringLiteral("1")).toUInt();
    const QStringList size = arguments.value(4, QStringLiteral("2592x1944")).split(QLatin1Char('x'));
    try {
        for (int i = 0; i < count; ++i) {
            const QString stem =
                QStringLiteral("%1/%2").arg(arguments.at(1)).arg(seed + i, 4, 10, QLatin1Char('0'));
            write(stem, deskpictures::makeSpread(seed + i, {size.value(0).toInt(), size.value(1).toInt()}));
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bookspreads: %s\n", error.what());
        return 1;
    }
    return 0;
}

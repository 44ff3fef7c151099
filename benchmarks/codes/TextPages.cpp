#include "TextPages.h"

#include "Codec.h"
#include "Rotate.h"

#include <QFont>
#include <QImage>
#include <QPainter>

#include <random>

namespace {

constexpr int widthPx = 1600, heightPx = 1200;

cv::Mat deskPage(int number)
{
    static const char* const names[] = {"01-letter",
                                        "02-form",
                                        "03-english-text",
                                        "04-chinese-text",
                                        "05-russian-text",
                                        "06-red-seal",
                                        "07-blue-seal",
                                        "08-receipt",
                                        "09-card-front",
                                        "10-card-back"};
    const auto index = static_cast<size_t>(number) % std::size(names);
    const auto page =
        mirvak::readImage(std::string(LUMRO_DESK_DIR "/pictures/1600x1200/") + names[index] + ".jpg");
    return page ? page->pixels : cv::Mat();
}

cv::Mat writtenPage(int number)
{
    std::mt19937 random(static_cast<unsigned>(number));
    QImage page(widthPx, heightPx, QImage::Format_RGB888);
    page.fill(Qt::white);
    QPainter painter(&page);
    const char* const faces[] = {"DejaVu Sans", "DejaVu Sans Mono", "Noto Sans CJK SC"};
    QFont font{QLatin1String(faces[number % 3])};
    font.setPixelSize(12 + number % 6 * 7);
    font.setBold(number % 2);
    painter.setFont(font);
    const QString letters =
        QStringLiteral("abcdefghijklmnopqrstuvwxyzIIIllliii|||0123456789     ,.-造纸坊第号书架年月日");
    for (int y = 40; y < heightPx - 20; y += font.pixelSize() * 5 / 4) {
        QString line;
        for (int width = 0; width < widthPx - 120;
             width += painter.fontMetrics().horizontalAdvance(line.back()))
            line += letters[int(random() % unsigned(letters.size()))];
        painter.drawText(60, y, line);
    }
    painter.end();
    return cv::Mat(heightPx, widthPx, CV_8UC3, page.bits(), size_t(page.bytesPerLine())).clone();
}

} // namespace

std::vector<cv::Mat> textPages(int count)
{
    std::vector<cv::Mat> pages;
    for (int i = 0; i < count; ++i) {
        mirvak::Image page;
        page.pixels = i % 2 ? writtenPage(i / 2) : deskPage(i / 2);
        mirvak::rotate(page, i * 17 % 90);
        pages.push_back(page.pixels);
    }
    return pages;
}

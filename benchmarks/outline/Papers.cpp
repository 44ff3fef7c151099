#include "Papers.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <functional>
#include <map>

using deskpictures::FlatPage;
using deskpictures::Sheet;

namespace papers {

namespace {

constexpr double dpi = 150; // more than the pictures resolve

QColor paperColour(cv::RNG& random)
{
    const int level = random.uniform(238, 254);
    return {level, level - random.uniform(0, 4), level - random.uniform(0, 10)};
}

FlatPage blank(double width, double height, cv::RNG& random)
{
    Sheet sheet(width, height, paperColour(random), dpi);
    return deskpictures::finish(sheet);
}

/// Hills of colour with a horizon: a photograph as the eye takes it from afar.
void drawScenery(Sheet& sheet, const QRectF& mm, cv::RNG& random)
{
    const double horizon = random.uniform(0.3, 0.7);
    const QColor sky(random.uniform(120, 235), random.uniform(150, 235), random.uniform(170, 250));
    const QColor ground(random.uniform(30, 150), random.uniform(40, 150), random.uniform(20, 120));
    sheet.box({mm.x(), mm.y(), mm.width(), mm.height() * horizon}, sky);
    sheet.box({mm.x(), mm.y() + mm.height() * horizon, mm.width(), mm.height() * (1 - horizon)}, ground);
    for (int i = 0; i < 9; ++i) { // houses
        const double w = random.uniform(0.05, 0.3) * mm.width(), h = random.uniform(0.05, 0.4) * mm.height();
        const double x = mm.x() + random.uniform(0.0, 1.0) * (mm.width() - w);
        const double y = mm.y() + random.uniform(0.0, 1.0) * (mm.height() - h);
        sheet.box({x, y, w, h},
                  QColor(random.uniform(30, 240), random.uniform(30, 240), random.uniform(30, 240)),
                  Qt::transparent,
                  0,
                  random.uniform(0, 2) ? 0.5 * std::min(w, h) : 0);
    }
}

FlatPage photograph(cv::RNG& random)
{
    const bool isUpright = random.uniform(0, 2) == 0;
    const double width = isUpright ? 102 : 152, height = isUpright ? 152 : 102;
    const double border = random.uniform(3.0, 8.0);
    Sheet sheet(width, height, paperColour(random), dpi);
    drawScenery(sheet, {border, border, width - 2 * border, height - 2 * border}, random);
    return deskpictures::finish(sheet);
}

/// Text in columns below a picture; a frame around some of it.
FlatPage magazine(double width, double height, cv::RNG& random)
{
    Sheet sheet(width, height, paperColour(random), dpi);
    const double margin = 0.08 * width;
    const bool bleeds = random.uniform(0, 3) == 0;
    const double edge = bleeds ? 0 : margin;
    drawScenery(sheet, {edge, edge, width - 2 * edge, 0.35 * height - edge}, random);
    deskpictures::TextStyle style;
    style.points = 9 * width / 210;
    const QStringList words = deskpictures::pageText(QStringLiteral("english"));
    for (int column = 0; column < 2; ++column) {
        double top = 0.4 * height;
        for (int i = 0; top < 0.8 * height; ++i)
            top = sheet.paragraph(margin + column * (0.5 * width - 0.5 * margin),
                                  top,
                                  0.5 * width - 1.5 * margin,
                                  words[i % words.size()],
                                  style) +
                  0.01 * height;
    }
    return deskpictures::finish(sheet);
}

/// A ruled table that nearly fills the page.
FlatPage table(double width, double height, cv::RNG& random)
{
    Sheet sheet(width, height, paperColour(random), dpi);
    const double left = 0.06 * width, top = 0.06 * height, right = width - left, bottom = height - top;
    const QColor ink(60, 60, 70);
    const double line = random.uniform(0.2, 0.7);
    if (random.uniform(0, 2))
        sheet.box({left, top, right - left, (bottom - top) / 14}, QColor(60, 90, 140));
    for (int i = 0; i <= 14; ++i)
        sheet.rule(left, top + i * (bottom - top) / 14, right, top + i * (bottom - top) / 14, line, ink);
    for (int i = 0; i <= 4; ++i)
        sheet.rule(left + i * (right - left) / 4, top, left + i * (right - left) / 4, bottom, line, ink);
    return deskpictures::finish(sheet);
}

FlatPage drawnOnce(const char* name, const std::function<FlatPage()>& draw)
{
    static std::map<std::string, FlatPage> pages;
    const auto known = pages.find(name);
    if (known != pages.end())
        return known->second;
    FlatPage page = draw();
    page.image =
        page.image.scaled(page.image.size() * (dpi / 300), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return pages.emplace(name, page).first->second;
}

} // namespace

Paper make(int kind, cv::RNG& random)
{
    switch (kind) {
    case 0:
        return {"letter", drawnOnce("letter", deskpictures::drawLetter)};
    case 1:
        return {"receipt", drawnOnce("receipt", deskpictures::drawReceipt), 0.8};
    case 2:
        return {"card", drawnOnce("front", deskpictures::drawCardFront), 0.76};
    case 3:
        return {"photograph", photograph(random)};
    case 4:
        return {"plain A4", blank(210, 297, random)};
    case 5:
        return {"form", drawnOnce("form", deskpictures::drawForm)};
    case 6:
        return {"plain A5", blank(148, 210, random)};
    case 7:
        return {"A5", magazine(148, 210, random)};
    case 8:
        return {"A3", magazine(297, 420, random), 0.5};
    case 9:
        return {"card back", drawnOnce("back", deskpictures::drawCardBack), 0.76};
    case 10:
        return {"table", table(210, 297, random)};
    case 11:
        return {"Chinese text", drawnOnce("chinese", deskpictures::drawChineseText)};
    case 12:
        return {"sealed page", drawnOnce("seal", deskpictures::drawRedSeal)};
    default:
        break;
    }
    return {"plain letter", blank(216, 279, random)};
}

} // namespace papers

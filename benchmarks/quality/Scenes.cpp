#include "Scenes.h"

#include "Catalogue.h"
#include "camera/Sensor.h"
#include "pages/Seal.h"

#include <QRandomGenerator>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <functional>

using deskpictures::FlatPage;
using deskpictures::Sheet;
using deskpictures::TextStyle;
using deskpictures::Typeface;

namespace {

/// What fades, what bleaches and what takes a cast.
FlatPage drawHardPage()
{
    Sheet sheet(210, 297, QColor(252, 252, 252));
    TextStyle style;
    double top = 20;
    const QStringList words = deskpictures::pageText(QStringLiteral("english"));
    for (int i = 0; i < 6; ++i) { // ever paler, ever smaller
        style.points = 12 - i;
        const int level = 30 + 30 * i;
        style.ink = QColor(level, level, level);
        top = sheet.paragraph(20, top, 170, words[i % words.size()], style) + 2;
    }
    style = TextStyle();
    for (int i = 0; i < 8; ++i) // pencil and hairlines
        sheet.rule(20, 170 + 3 * i, 100, 170 + 3 * i, 0.1 + 0.05 * i, QColor(150, 150, 155));
    const QColor inks[] = {
        {225, 60, 50}, {40, 90, 190}, {50, 150, 70}, {240, 200, 60}, {150, 80, 160}, {235, 140, 50}};
    for (int i = 0; i < 6; ++i)
        sheet.box({20 + 28.0 * i, 200, 24, 14}, inks[i]);
    const QColor pale[] = {{253, 240, 200}, {225, 238, 252}, {232, 246, 226}};
    for (int i = 0; i < 3; ++i) {
        sheet.box({20 + 56.0 * i, 218, 52, 14}, pale[i]);
        sheet.text(24 + 56.0 * i, 227, QStringLiteral("in a tinted box"), style);
    }
    sheet.box({20, 236, 70, 5}, QColor(255, 245, 90)); // highlighter
    sheet.text(22, 240, QStringLiteral("marked with a highlighter"), style);
    for (int y = 0; y < 40; ++y) // a photograph
        for (int x = 0; x < 60; ++x)
            sheet.box({120 + x * 1.0, 240 + y * 1.0, 1.05, 1.05},
                      QColor(40 + 3 * x, 60 + 2 * x + 2 * y, 200 - 3 * y + x));
    return deskpictures::finish(sheet);
}

deskpictures::Light anyLight(QRandomGenerator& any)
{
    const auto between = [&any](double low, double high) {
        return low + (high - low) * any.generateDouble();
    };
    deskpictures::Light light;
    light.fromDegrees = between(0, 360);
    light.falloff = between(0.05, 0.3);
    light.vignette = between(0.05, 0.25);
    light.shadowAt = {between(0, 1), between(0, 1)};
    light.shadowSize = {between(0.3, 0.6), between(0.3, 0.6)};
    light.shadowDepth = any.bounded(2) ? between(0.1, 0.45) : 0;
    const double warmth = between(-0.08, 0.08);
    light.cast = {1 + warmth, 1, 1 - warmth};
    light.exposure = between(0.55, 0.95);
    return light;
}

/// How much of the paper's light is missing at each place, 0 to 1.
cv::Mat darkness(const cv::Mat& truth)
{
    std::vector<cv::Mat> channels;
    cv::split(truth, channels);
    cv::Mat least = cv::min(cv::min(channels[0], channels[1]), channels[2]), dark;
    least.convertTo(dark, CV_32F, -1.0 / 255, 1);
    return dark;
}

void findParts(Scene& scene)
{
    const cv::Mat dark = darkness(scene.truth);
    cv::Mat grey, peak, wide;
    cv::cvtColor(scene.truth, grey, cv::COLOR_RGB2GRAY);
    grey.convertTo(grey, CV_32F, -1.0 / 255, 1);
    cv::dilate(grey, peak, cv::Mat(), {-1, -1}, 3);
    cv::Mat(255 * (1 - 0.5 * peak)).convertTo(scene.half, CV_8U);
    scene.half = cv::min(scene.half, 250); // what is white paper to the other measures is no ink here
    // Areas are no strokes: what is still there when all thin things are taken away.
    cv::morphologyEx(dark, wide, cv::MORPH_OPEN, cv::getStructuringElement(cv::MORPH_RECT, {15, 15}));
    cv::dilate(wide, wide, cv::Mat(), {-1, -1}, 8);
    scene.ink = (grey > peak * 0.5) & (peak > 0.2) & (wide < 0.05);
    cv::dilate(dark > 0.03, scene.paper, cv::Mat(), {-1, -1}, 6);
    scene.paper = ~scene.paper;
    cv::Mat lab;
    cv::cvtColor(scene.truth, lab, cv::COLOR_RGB2Lab);
    cv::Mat a, b;
    cv::extractChannel(lab, a, 1);
    cv::extractChannel(lab, b, 2);
    scene.print = (cv::abs(a - 128) > 12) | (cv::abs(b - 128) > 12);
    cv::erode(scene.print, scene.print, cv::Mat(), {-1, -1}, 1);
}

/// Without the paper's own tint, which nobody wants to see: most pixels are paper.
cv::Mat onWhite(const cv::Mat& page)
{
    cv::Mat white;
    std::vector<cv::Mat> channels;
    cv::split(page, channels);
    for (cv::Mat& channel : channels) {
        std::vector<int> histogram(256);
        for (int y = 0; y < channel.rows; ++y)
            for (int x = 0; x < channel.cols; ++x)
                ++histogram[channel.at<uchar>(y, x)];
        const auto paper = std::max_element(histogram.begin() + 128, histogram.end()) - histogram.begin();
        channel.convertTo(channel, CV_8U, 255.0 / double(paper));
    }
    cv::merge(channels, white);
    return white;
}

/// Where and under which light a page lies, always in the same way for the same seed.
struct Shot
{
    cv::Size size;
    cv::Size2d pageMm;
    deskpictures::Scene setting;
    deskpictures::View view;
    cv::Rect inside; ///< of the picture: the page's own middle

    cv::Mat seen(const FlatPage& page) const
    {
        const deskpictures::FlatLayer flat(page.image, pageMm, view.pxPerMm());
        return flat.warp(view.pageToPicture(), size);
    }
    cv::Mat photo(const FlatPage& page) const
    {
        return deskpictures::photograph(setting, view, {seen(page), {}})(inside).clone();
    }
    cv::Mat truth(const FlatPage& page) const
    {
        cv::Mat rgb;
        cv::cvtColor(seen(page), rgb, cv::COLOR_RGBA2RGB);
        return onWhite(rgb(inside));
    }
};

Shot shotOf(const FlatPage& page, cv::Size size, unsigned seed)
{
    QRandomGenerator any(seed);
    deskpictures::Scene setting;
    setting.pose.tiltDegrees = 0;
    setting.pose.fill = 1.06; // no desk in the picture
    setting.pose.turnDegrees = any.generateDouble() - 0.5;
    setting.light = anyLight(any);
    setting.seed = seed;
    const cv::Size2d pageMm(page.widthMm, page.heightMm);
    const deskpictures::View view(setting.pose, pageMm, size);
    // Its paper may not reach into the corners of a wider picture.
    cv::Rect inside({0, 0}, size);
    for (const auto& corner : view.corners(pageMm)) {
        if (corner.x < size.width / 2.0)
            inside &= cv::Rect(std::max(0, int(corner.x) + 12), 0, size.width, size.height);
        else
            inside &= cv::Rect(0, 0, std::min(size.width, int(corner.x) - 12), size.height);
    }
    return {size, pageMm, setting, view, inside};
}

Scene shoot(const std::string& name, const FlatPage& page, cv::Size size, unsigned seed)
{
    const Shot shot = shotOf(page, size, seed);
    Scene scene;
    scene.name = name;
    scene.photo = shot.photo(page);
    scene.truth = shot.truth(page);
    findParts(scene);
    return scene;
}

/// Text alone, or under three seals.
FlatPage drawSealed(const QString& text, bool isSealed, bool isBlue, unsigned seed)
{
    QRandomGenerator any(seed);
    Sheet sheet(210, 297, QColor(252, 252, 252));
    TextStyle style;
    if (text == QStringLiteral("chinese"))
        style.typeface = Typeface::Chinese;
    style.points = 9.0 + any.bounded(6);
    style.leading = 1.6;
    double top = 22;
    for (int i = 0; top < 260; ++i) {
        const QStringList words = deskpictures::pageText(text);
        top = sheet.paragraph(20, top, 170, words[i % words.size()], style) + 2;
    }
    for (int i = 0; isSealed && i < 3; ++i) {
        // Of blue up to violet, of red from crimson to orange; faint ones among them.
        const int hue = isBlue ? 205 + any.bounded(80) : (340 + any.bounded(50)) % 360;
        const int strength = 70 + any.bounded(160);
        const QColor ink = QColor::fromHsv(hue, strength, 190 + any.bounded(50));
        const deskpictures::Seal seal =
            any.bounded(2) ? deskpictures::starSeal(ink) : deskpictures::ringSeal(ink);
        const double x = 50 + any.bounded(110), y = 45 + 85 * i + any.bounded(40);
        press(sheet, seal, x, y, any.bounded(60) - 30);
        if (any.bounded(3) == 0) // pressed twice
            press(sheet, seal, x + 6 + any.bounded(14), y + any.bounded(12), any.bounded(60) - 30);
    }
    return deskpictures::finish(sheet);
}

/// Text with notes close to all four edges.
FlatPage drawToTheEdge()
{
    constexpr double margin = 4, width = 210, height = 297; // mm
    Sheet sheet(width, height, QColor(252, 252, 252));
    TextStyle style;
    double top = 30;
    const QStringList words = deskpictures::pageText(QStringLiteral("english"));
    for (int i = 0; top < 240; ++i)
        top = sheet.paragraph(25, top, 160, words[i % words.size()], style) + 2;
    sheet.text(margin, margin + 4, QStringLiteral("No. 17"), style);
    sheet.text(width - 30, height - margin, QStringLiteral("turn over"), style);
    for (const double x : {margin, width - margin})
        sheet.rule(x, 20, x, height - 20, 0.5, QColor(30, 30, 30));
    return deskpictures::finish(sheet);
}

} // namespace

std::vector<Scene> makeScenes(int count, cv::Size size, unsigned seed)
{
    struct Subject
    {
        const char* name;
        std::function<FlatPage()> draw;
    };
    const Subject subjects[] = {{"hard", drawHardPage},
                                {"letter", deskpictures::drawLetter},
                                {"form", deskpictures::drawForm},
                                {"english", deskpictures::drawEnglishText},
                                {"chinese", deskpictures::drawChineseText},
                                {"russian", deskpictures::drawRussianText},
                                {"red seal", deskpictures::drawRedSeal},
                                {"blue seal", deskpictures::drawBlueSeal}};
    std::vector<Scene> scenes;
    for (int i = 0; i < count; ++i) {
        const Subject& subject = subjects[size_t(i) % std::size(subjects)];
        scenes.push_back(shoot(subject.name, subject.draw(), size, seed + unsigned(i)));
    }
    return scenes;
}

std::vector<Scene> makeSealedScenes(int count, cv::Size size, unsigned seed, bool isBlue)
{
    const char* const texts[] = {"english", "chinese", "russian"};
    std::vector<Scene> scenes;
    for (unsigned i = 0; i < unsigned(count); ++i) {
        const QString text = QString::fromLatin1(texts[i % 3]);
        const FlatPage sealed = drawSealed(text, true, isBlue, seed + i);
        const FlatPage plain = drawSealed(text, false, isBlue, seed + i);
        const Shot shot = shotOf(sealed, size, seed + i);
        Scene scene;
        scene.name = text.toStdString();
        scene.photo = shot.photo(sealed);
        scene.truth = shot.truth(plain);
        findParts(scene);
        const cv::Mat stamped = darkness(shot.truth(sealed)) - darkness(scene.truth);
        cv::Mat near;
        cv::dilate(scene.ink, near, cv::Mat(), {-1, -1}, 3);
        scene.seal = (stamped > 0.25) & ~near;
        cv::dilate(stamped > 0.05, near, cv::Mat(), {-1, -1}, 6);
        scene.bare = ~near;
        cv::dilate(scene.seal, near, cv::Mat(), {-1, -1}, 4);
        scene.crossing = scene.ink & near;
        scenes.push_back(std::move(scene));
    }
    return scenes;
}

std::vector<TurnedPage> makeTurnedPages(int count, cv::Size size, unsigned seed)
{
    using deskpictures::Material;
    constexpr double mostTurn = 6; // degrees
    const std::function<FlatPage()> pages[] = {deskpictures::drawEnglishText,
                                               deskpictures::drawChineseText,
                                               drawToTheEdge,
                                               deskpictures::drawRussianText};
    std::vector<TurnedPage> turned;
    for (unsigned i = 0; i < unsigned(count); ++i) {
        QRandomGenerator any(seed + i);
        const FlatPage page = pages[i % std::size(pages)]();
        deskpictures::Scene setting;
        setting.desk = any.bounded(2) ? Material::Walnut : Material::Dark;
        setting.pose.fill = 0.85;
        setting.pose.turnDegrees = mostTurn * (2 * any.generateDouble() - 1);
        setting.light = anyLight(any);
        setting.seed = seed + i;
        const cv::Size2d pageMm(page.widthMm, page.heightMm);
        const deskpictures::View view(setting.pose, pageMm, size);
        const deskpictures::FlatLayer flat(page.image, pageMm, view.pxPerMm());
        const cv::Mat seen = flat.warp(view.pageToPicture(), size);
        TurnedPage result;
        result.photo = deskpictures::photograph(setting, view, {seen, {}});
        std::vector<cv::Mat> channels;
        cv::split(seen, channels); // the last one is 0 beside the page
        result.ink = (channels[1] < 128) & (channels[3] == 255);
        turned.push_back(std::move(result));
    }
    return turned;
}

#include "Sheets.h"

namespace sheetmap {

namespace {

Colour paperColour(const Colour& desk, Chance& chance)
{
    const int kind = chance.below(20);
    if (kind < 12)
        return chance.grey(222, 255, 5);
    if (kind < 14)
        return chance.grey(160, 225, 8);
    if (kind < 16) // tinted paper
        return chance.near(chance.grey(215, 245, 0), 38);
    if (kind < 18) // like the desk that it lies on
        return chance.near(desk, chance.spread(4, 25));
    return chance.any();
}

cv::Rect part(const cv::Rect& whole, double left, double top, double right, double bottom)
{
    const cv::Rect inner(whole.x + cvRound(left * whole.width),
                         whole.y + cvRound(top * whole.height),
                         std::max(1, cvRound((right - left) * whole.width)),
                         std::max(1, cvRound((bottom - top) * whole.height)));
    return inner & whole;
}

/// Words in lines: what is left of them at this size.
void write(cv::Mat& page, const cv::Rect& place, double lineHeight, const Colour& ink, Chance& chance)
{
    const double word = chance.between(1, 3) * lineHeight, strength = chance.between(0.15, 0.9);
    const double dense = chance.between(0.3, 0.6);
    for (double y = place.y; y + lineHeight < place.br().y; y += lineHeight) {
        const double end = place.x + place.width * (chance.happens(0.2) ? chance.between(0.2, 0.9)
                                                                        : chance.between(0.92, 1));
        if (chance.happens(0.06)) // between paragraphs
            continue;
        for (double x = place.x; x < end;) {
            const double wide = std::min(end - x, chance.between(0.3, 1.6) * word);
            const cv::Rect box = cv::Rect(cvRound(x),
                                          cvRound(y),
                                          std::max(1, cvRound(wide)),
                                          std::max(1, cvRound(dense * lineHeight))) &
                                 cv::Rect({}, page.size());
            if (!box.empty()) {
                cv::Mat there = page(box);
                there.forEach<Colour>([&](Colour& pixel, const int* at) {
                    const bool isGap = (at[1] * 7 + at[0] * 3) % 4 == 0;
                    pixel += static_cast<float>(isGap ? 0.4 * strength : strength) * (ink - pixel);
                });
            }
            x += wide + 0.4 * lineHeight;
        }
    }
}

void picture(cv::Mat& page, const cv::Rect& place, Chance& chance)
{
    if (place.width < 2 || place.height < 2)
        return;
    cv::Mat there = page(place);
    const Colour sky = chance.any(), ground = chance.any();
    const double horizon = chance.between(0.2, 0.8) * place.height, soft = chance.spread(0.5, 40);
    there.forEach<Colour>([&](Colour& pixel, const int* at) {
        const auto share = static_cast<float>(1 / (1 + std::exp((at[0] - horizon) / soft)));
        pixel = share * sky + (1 - share) * ground;
    });
    const int things = chance.below(8);
    for (int i = 0; i < things; ++i) {
        const cv::Point at(chance.below(place.width), chance.below(place.height));
        const int size = 1 + chance.below(std::max(2, place.height / 3));
        if (chance.happens(0.5))
            cv::circle(there, at, size, chance.any(), -1);
        else
            cv::rectangle(there, {at.x, at.y, size, 1 + chance.below(size)}, chance.any(), -1);
    }
    const double fine = chance.spread(1.5, 20), depth = chance.spread(3, 40);
    const cv::Mat noise = smoothNoise(place.size(), fine, fine, chance);
    there.forEach<Colour>([&](Colour& pixel, const int* at) {
        pixel += Colour::all(static_cast<float>(depth * noise.at<float>(at[0], at[1])));
    });
}

void table(cv::Mat& page, const cv::Rect& place, const Colour& ink, Chance& chance)
{
    const int rows = 1 + chance.below(16), columns = 1 + chance.below(6);
    const double strength = chance.between(0.2, 1);
    const Colour line =
        page.at<Colour>(place.tl()) + static_cast<float>(strength) * (ink - page.at<Colour>(place.tl()));
    const int thick = chance.happens(0.2) ? 2 : 1;
    if (chance.happens(0.3))
        cv::rectangle(page, part(place, 0, 0, 1, 1.0 / rows), chance.any(), -1);
    for (int i = 0; i <= rows; ++i)
        cv::line(page,
                 place.tl() + cv::Point(0, i * (place.height - 1) / rows),
                 place.tl() + cv::Point(place.width - 1, i * (place.height - 1) / rows),
                 line,
                 thick);
    for (int i = 0; i <= columns; ++i)
        cv::line(page,
                 place.tl() + cv::Point(i * (place.width - 1) / columns, 0),
                 place.tl() + cv::Point(i * (place.width - 1) / columns, place.height - 1),
                 line,
                 thick);
    if (chance.happens(0.6))
        write(page, place, std::max(2.0, place.height / (rows + 0.01)), ink, chance);
}

/// Blocks of anything one below the other, in one column or two.
void fillPage(cv::Mat& page, const cv::Rect& place, const Colour& ink, Chance& chance)
{
    const double lineHeight = std::max(1.6, chance.between(0.012, 0.04) * std::max(page.rows, page.cols));
    for (double y = 0; y < 0.97;) {
        const double high = chance.between(0.05, 0.5), end = std::min(1.0, y + high);
        const cv::Rect block = part(place, 0, y, 1, end);
        y = end + chance.between(0.01, 0.06);
        if (block.width < 6 || block.height < 6)
            continue;
        const int kind = chance.below(10);
        if (kind < 5) {
            const double gutter = chance.happens(0.3) ? 0.03 : -1;
            if (gutter > 0) {
                write(page, part(block, 0, 0, 0.5 - gutter, 1), lineHeight, ink, chance);
                write(page, part(block, 0.5 + gutter, 0, 1, 1), lineHeight, ink, chance);
            } else {
                write(page, block, lineHeight, ink, chance);
            }
        } else if (kind == 5) {
            write(page, part(block, 0, 0, chance.between(0.3, 1), 1), 2.5 * lineHeight, ink, chance);
        } else if (kind == 6) {
            table(page, block, ink, chance);
        } else if (kind == 7) {
            const double left = chance.between(0, 0.5);
            picture(page, part(block, left, 0, chance.between(left + 0.2, 1), 1), chance);
        } else if (kind == 8) {
            const int radius = std::max(2, std::min(block.width, block.height) / 3);
            cv::circle(page,
                       block.tl() + cv::Point(chance.below(block.width), block.height / 2),
                       radius,
                       chance.any(),
                       1 + chance.below(3));
        }
    }
}

void foldIn(cv::Mat& page, bool isUpright, double at, double depth, double wide)
{
    const double middle = at * (isUpright ? page.cols : page.rows);
    page.forEach<Colour>([&](Colour& pixel, const int* place) {
        const double far = ((isUpright ? place[1] : place[0]) - middle) / wide;
        pixel *= static_cast<float>(1 - depth * std::exp(-std::abs(far)));
    });
}

cv::Size sizeOf(int kind, double longest, Chance& chance)
{
    static const std::array<double, 6> formats{1.414, 1.414, 1.414, 1.294, 1.333, 1.5};
    double ratio = formats[static_cast<size_t>(chance.below(6))];
    if (kind == 0)
        ratio = chance.spread(1.8, 6); // a receipt
    else if (kind == 1)
        ratio = chance.between(1.35, 1.65); // a card
    else if (chance.happens(0.2))
        ratio = chance.spread(1, 2.2);
    const int shortest = std::max(8, cvRound(longest / ratio));
    const bool isUpright = chance.happens(0.6);
    const int longer = std::max(8, cvRound(longest));
    return isUpright ? cv::Size(shortest, longer) : cv::Size(longer, shortest);
}

} // namespace

PaperSheet makePaper(double longest, const Colour& desk, Chance& chance)
{
    const int kind = chance.below(13);
    const cv::Size size = sizeOf(kind, longest, chance);
    const Colour paper = kind == 1 && chance.happens(0.7) ? chance.any() : paperColour(desk, chance);
    const float lightness = (paper[0] + paper[1] + paper[2]) / 3;
    const Colour ink = chance.happens(0.85)
                           ? lightness > 110 ? chance.grey(5, 100, 20) : chance.grey(170, 250, 20)
                           : chance.any();
    cv::Mat page(size, CV_32FC3, cv::Scalar(paper[0], paper[1], paper[2]));
    const double margin = chance.between(0.02, 0.14);
    const cv::Rect whole({}, size), inner = part(whole, margin, margin, 1 - margin, 1 - margin);
    PaperSheet sheet;
    if (kind == 0 || kind > 5) {
        fillPage(page, inner, ink, chance);
    } else if (kind == 1) {
        sheet.roundness = chance.between(0, 0.09);
        if (chance.happens(0.5))
            picture(page, whole, chance), page = 0.4 * page + 0.6 * cv::Scalar(paper[0], paper[1], paper[2]);
        write(page, part(inner, 0, 0.1, 0.6, 1), std::max(2.0, 0.09 * size.height), ink, chance);
        if (chance.happens(0.6))
            picture(page, part(inner, 0.65, 0.1, 1, 0.75), chance);
    } else if (kind == 2) { // a photograph, mostly with its border
        const double border = chance.happens(0.7) ? chance.between(0.015, 0.09) : 0;
        picture(page, part(whole, border, border, 1 - border, 1 - border), chance);
    } else if (kind == 3) {
        table(page, part(whole, 0.06, 0.05, 0.94, 0.95), ink, chance);
    } else if (kind == 4 && chance.happens(0.5)) { // a spread
        const bool isUpright = size.width > size.height;
        fillPage(page, isUpright ? part(inner, 0, 0, 0.45, 1) : part(inner, 0, 0, 1, 0.45), ink, chance);
        fillPage(page, isUpright ? part(inner, 0.55, 0, 1, 1) : part(inner, 0, 0.55, 1, 1), ink, chance);
        foldIn(page, isUpright, chance.between(0.49, 0.51), chance.between(0.1, 0.6), chance.spread(1, 12));
    }
    for (int i = 0; kind > 4 && chance.happens(0.1) && i < 2; ++i)
        foldIn(page,
               chance.happens(0.3),
               chance.between(0.2, 0.8),
               chance.between(-0.06, 0.15),
               chance.spread(0.7, 3));
    page.convertTo(sheet.image, CV_8UC3);
    return sheet;
}

} // namespace sheetmap

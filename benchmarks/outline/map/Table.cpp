#include "Table.h"

#include "Grounds.h"

namespace sheetmap {

namespace {

cv::Matx33d scaled(double factor, double x, double y)
{
    return {factor, 0, x, 0, factor, y, 0, 0, 1};
}

cv::Matx33d turned(double angle, double x = 0, double y = 0)
{
    return {std::cos(angle), -std::sin(angle), x, std::sin(angle), std::cos(angle), y, 0, 0, 1};
}

/// A plane under a tilted camera, its unit the length of a frame's side at its middle.
cv::Matx33d anyTilt(Chance& chance)
{
    const double tilt = chance.happens(0.5) ? chance.between(0, 0.14) : chance.between(0.1, 0.45);
    const double from = chance.between(0, 2 * CV_PI), distance = chance.between(1.1, 2.2);
    const cv::Matx33d lean(
        std::cos(tilt), 0, 0, 0, 1, 0, std::sin(tilt) / distance, 0, 1); // farther to the right
    return turned(from) * lean * turned(-from);
}

cv::Point2d mapped(const cv::Matx33d& way, const cv::Point2d& point)
{
    const cv::Vec3d p = way * cv::Vec3d(point.x, point.y, 1);
    return {p[0] / p[2], p[1] / p[2]};
}

Corners cornersOf(const cv::Matx33d& way, const cv::Size& size)
{
    return {mapped(way, {-0.5, -0.5}),
            mapped(way, {size.width - 0.5, -0.5}),
            mapped(way, {size.width - 0.5, size.height - 0.5}),
            mapped(way, {-0.5, size.height - 0.5})};
}

void round(cv::Mat& shape, double roundness)
{
    const int radius = cvRound(roundness * std::min(shape.cols, shape.rows));
    if (radius < 1)
        return;
    shape.setTo(0);
    cv::rectangle(shape, {radius, 0, shape.cols - 2 * radius, shape.rows}, 255, -1);
    cv::rectangle(shape, {0, radius, shape.cols, shape.rows - 2 * radius}, 255, -1);
    for (const int x : {radius, shape.cols - 1 - radius})
        for (const int y : {radius, shape.rows - 1 - radius})
            cv::circle(shape, {x, y}, radius, 255, -1);
}

} // namespace

Table::Table(Chance& chance, bool withPatterns) : chance_(chance)
{
    tilt_ = scaled(1, 0.5 * frame.width, 0.5 * frame.height) * scaled(frame.width, 0, 0) * anyTilt(chance) *
            scaled(1.0 / frame.width, 0, 0);
    const cv::Mat ground = makeGround({420, 420}, chance, withPatterns);
    desk_ = ground.at<Colour>(chance.below(420), chance.below(420));
    cv::warpPerspective(ground,
                        picture_,
                        tilt_ * turned(chance.happens(0.5) ? 0 : chance.between(0, CV_PI)) *
                            scaled(chance.spread(0.8, 1.8), -210, -210),
                        frame,
                        cv::INTER_LINEAR,
                        cv::BORDER_REFLECT);
}

Corners Table::seen(const PaperSheet& paper, const cv::Matx33d& place) const
{
    return cornersOf(tilt_ * place, paper.image.size());
}

Corners Table::lay(const PaperSheet& paper, const cv::Matx33d& place, double depth)
{
    const cv::Size size = paper.image.size();
    const cv::Matx33d way = tilt_ * place;
    cv::Mat shape(size, CV_8UC1, cv::Scalar(255)), mask, image;
    round(shape, paper.roundness);
    cv::warpPerspective(shape, mask, way, frame, cv::INTER_LINEAR);
    cv::warpPerspective(paper.image, image, way, frame, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    throwShadow(mask, depth);
    if (chance_.happens(0.3)) // the edge itself catches light or lies in the dark
        rim(mask);
    picture_.forEach<Colour>([&](Colour& pixel, const int* at) {
        const float share = mask.at<uchar>(at[0], at[1]) / 255.0F;
        if (share > 0)
            pixel = share * Colour(image.at<cv::Vec3b>(at[0], at[1])) + (1 - share) * pixel;
    });
    return cornersOf(way, size);
}

void Table::layBar(const cv::Point2d& from, const cv::Point2d& to, double wide, const Colour& colour)
{
    for (int i = 0; i < 4; ++i)
        cv::line(picture_,
                 from,
                 to,
                 cv::Scalar(colour * static_cast<float>(0.7 + 0.1 * i)),
                 std::max(1, cvRound(wide * (1 - 0.22 * i))),
                 cv::LINE_AA);
}

void Table::clutter()
{
    for (int i = 0; i < 3 && chance_.happens(0.4); ++i) {
        const cv::Point at(chance_.below(frame.width), chance_.below(frame.height));
        const Colour colour = chance_.any();
        const int size = cvRound(chance_.spread(5, 35));
        switch (chance_.below(3)) {
        case 0:
            cv::circle(picture_, at, size, colour, chance_.happens(0.7) ? -1 : 3, cv::LINE_AA);
            break;
        case 1:
            cv::ellipse(
                picture_, at, {size, size / 2 + 1}, chance_.between(0, 180), 0, 360, colour, -1, cv::LINE_AA);
            break;
        default:
            layBar(at,
                   at + cv::Point(chance_.below(300) - 150, chance_.below(300) - 150),
                   chance_.spread(1, 14),
                   colour);
        }
    }
    if (chance_.happens(0.1))
        endDesk();
}

void Table::throwShadow(const cv::Mat& mask, double depth)
{
    const double soft = chance_.spread(0.4, 6), far = chance_.spread(0.2, 5),
                 to = chance_.between(0, 2 * CV_PI);
    if (depth < 0)
        depth = chance_.happens(0.15) ? 0 : chance_.between(0.02, 0.5);
    cv::Mat shadow;
    cv::warpAffine(mask, shadow, cv::Matx23d(1, 0, far * std::cos(to), 0, 1, far * std::sin(to)), frame);
    cv::GaussianBlur(shadow, shadow, {}, soft);
    picture_.forEach<Colour>([&](Colour& pixel, const int* at) {
        pixel *= static_cast<float>(1 - depth * shadow.at<uchar>(at[0], at[1]) / 255);
    });
}

void Table::rim(const cv::Mat& mask)
{
    cv::Mat soft;
    cv::GaussianBlur(mask, soft, {}, 0.7);
    const auto change = static_cast<float>(chance_.between(-0.35, 0.15));
    picture_.forEach<Colour>([&](Colour& pixel, const int* at) {
        pixel *= 1 + change * static_cast<float>(soft.at<uchar>(at[0], at[1])) / 255;
    });
}

void Table::endDesk()
{
    const double angle = chance_.between(0, 2 * CV_PI), offset = chance_.between(60, 150);
    const Colour floor = chance_.any();
    picture_.forEach<Colour>([&](Colour& pixel, const int* at) {
        const double d = (at[1] - 0.5 * frame.width) * std::cos(angle) +
                         (at[0] - 0.5 * frame.height) * std::sin(angle) - offset;
        if (d > 0)
            pixel = floor;
    });
}

cv::Matx33d placed(const PaperSheet& paper, const cv::Point2d& middle, double angle, double length)
{
    const double factor = length / std::max(paper.image.cols, paper.image.rows);
    return turned(angle, middle.x, middle.y) *
           scaled(factor, -0.5 * factor * paper.image.cols, -0.5 * factor * paper.image.rows);
}

} // namespace sheetmap

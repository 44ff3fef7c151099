#include "PageFilm.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <cmath>

namespace made {

namespace {

constexpr double deskWidthMm = 420, sheetPerMm = 4;
// Fingers and thumb from the palm's middle, along and across the arm, millimetres.
constexpr std::array<std::array<double, 4>, 5> fingers{
    {{-35, -28, -95, -34}, {-40, -9, -112, -11}, {-38, 10, -105, 14}, {-32, 28, -82, 38}, {5, 32, -30, 66}}};

} // namespace

PageFilm::PageFilm(cv::Size frame, Desk kind, double noise)
    : perMm_(frame.width / deskWidthMm), desk_(desk(frame, kind)), ground_(desk_.clone()),
      grain_(frame + cv::Size(64, 64), CV_32FC3)
{
    cv::RNG(11).fill(grain_, cv::RNG::NORMAL, 0, noise);
}

cv::Mat PageFilm::picture(const Moment& moment)
{
    if (!(moment.sheets == laidOut_)) {
        desk_.copyTo(ground_);
        for (const auto& [sheet, middle, degrees] : moment.sheets)
            lay(ground_,
                *sheet,
                placed(middle * perMm_, cv::Size2d(sheet->size()) * (perMm_ / sheetPerMm), degrees),
                0.8);
        laidOut_ = moment.sheets;
    }
    cv::Mat picture = ground_.clone(), seen;
    if (moment.arm)
        drawArm(*moment.arm, picture);
    cv::Mat lens = cv::getRotationMatrix2D({picture.cols / 2.0F, picture.rows / 2.0F}, 0, moment.zoom);
    lens.at<double>(0, 2) += moment.shake.x;
    lens.at<double>(1, 2) += moment.shake.y;
    cv::warpAffine(picture, seen, lens, picture.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    if (moment.blur > 0)
        cv::GaussianBlur(seen, seen, {}, moment.blur * picture.cols / 640);
    shineOn(moment, seen);
    return seen;
}

void PageFilm::drawArm(const Moment::Arm& arm, cv::Mat& picture) const
{
    const double angle = arm.fromDegrees * CV_PI / 180;
    const cv::Point2d along(std::cos(angle), std::sin(angle)), across(-along.y, along.x);
    cv::Mat hand(picture.size(), CV_8UC1, cv::Scalar(0)), sleeve = hand.clone(), shade;
    // From the palm's middle, 112 mm behind the tips.
    const auto limb = [&](cv::Mat& of, const std::array<double, 4>& f, double thick) {
        const cv::Point2d palm = arm.tips + 112 * along;
        cv::line(of,
                 (palm + f[0] * along + f[1] * across) * perMm_,
                 (palm + f[2] * along + f[3] * across) * perMm_,
                 255,
                 std::max(cvRound(thick * perMm_), 1),
                 cv::LINE_AA);
    };
    limb(hand, {-28, 0, 30, 0}, 72);
    limb(hand, {30, 0, 100, 0}, 54);
    for (const auto& finger : fingers)
        limb(hand, finger, 17);
    limb(sleeve, {105, 0, 700, 0}, 88);
    cv::warpAffine(
        cv::max(hand, sleeve), shade, cv::Matx23d(1, 0, 9 * perMm_, 0, 1, 7 * perMm_), picture.size());
    cv::GaussianBlur(shade, shade, {}, 6 * perMm_);
    shade.convertTo(shade, CV_8U, -0.45, 255);
    cv::cvtColor(shade, shade, cv::COLOR_GRAY2RGB);
    cv::multiply(picture, shade, picture, 1.0 / 255);
    picture.setTo(arm.skin, hand > 127);
    picture.setTo(arm.cloth, sleeve > 127);
}

void PageFilm::shineOn(const Moment& moment, cv::Mat& picture)
{
    const cv::Mat grain = grain_(cv::Rect({random_.uniform(0, 64), random_.uniform(0, 64)}, picture.size()));
    cv::Mat light(picture.size(), CV_32FC3), seen;
    for (int x = 0; x < light.cols; ++x) {
        const double away = (static_cast<double>(x) / light.cols - moment.shadow) / 0.16;
        light.col(x).setTo(cv::Scalar(moment.white) *
                           (1 - (moment.shadow < -0.5 ? 0 : 0.3 * std::exp(-away * away))));
    }
    for (int y = 0; y < light.rows; ++y) {
        const double turns = moment.beatPhase + 1.5 * y / light.rows;
        light.row(y) *= moment.brightness * (1 + moment.beat * std::sin(2 * CV_PI * turns));
    }
    cv::multiply(picture, light, seen, 1, CV_32F);
    cv::add(seen, grain, picture, cv::noArray(), CV_8U);
}

} // namespace made

#include "PageFilm.h"

#include "Background.h"
#include "Codec.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace made {

namespace {

constexpr double deskWidthMm = 420;
constexpr double sheetPerMm = 4;
// Fingers and thumb from the palm's middle, along and across the arm, millimetres.
constexpr std::array<std::array<double, 4>, 5> fingers{
    {{-35, -28, -95, -34}, {-40, -9, -112, -11}, {-38, 10, -105, 14}, {-32, 28, -82, 38}, {5, 32, -30, 66}}};

cv::Mat sensorGrain(cv::Size size, double noise)
{
    cv::RNG random(11);
    cv::Mat grain(size.height + 64, size.width + 64, CV_32FC3);
    random.fill(grain, cv::RNG::NORMAL, 0, noise);
    return grain;
}

// The shadow of a shape, `depth` of the light, moved aside and softened.
void shadeBeside(const cv::Mat& shape, cv::Point2d aside, double soft, double depth, cv::Mat& picture)
{
    cv::Mat shade, colours;
    cv::warpAffine(shape, shade, cv::Matx23d(1, 0, aside.x, 0, 1, aside.y), shape.size());
    cv::GaussianBlur(shade, shade, {}, soft);
    shade.convertTo(shade, CV_8U, -depth, 255);
    cv::cvtColor(shade, colours, cv::COLOR_GRAY2RGB);
    cv::multiply(picture, colours, picture, 1.0 / 255);
}

} // namespace

PageFilm::PageFilm(cv::Size frame, Desk kind, double noise)
    : perMm_(frame.width / deskWidthMm), desk_(desk(frame, kind)), grain_(sensorGrain(frame, noise))
{
    desk_.copyTo(ground_);
}

cv::Mat PageFilm::picture(const Moment& moment)
{
    if (!(moment.sheets == laidOut_))
        layOut(moment.sheets);
    cv::Mat picture = ground_.clone();
    if (moment.arm)
        drawArm(*moment.arm, picture);
    if (moment.zoom != 1 || moment.shake != cv::Point2d()) {
        cv::Mat lens = cv::getRotationMatrix2D({picture.cols / 2.0F, picture.rows / 2.0F}, 0, moment.zoom);
        lens.at<double>(0, 2) += moment.shake.x;
        lens.at<double>(1, 2) += moment.shake.y;
        cv::Mat seen;
        cv::warpAffine(picture, seen, lens, picture.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
        picture = seen;
    }
    if (moment.blur > 0)
        cv::GaussianBlur(picture, picture, {}, moment.blur * picture.cols / 640);
    shineOn(moment, picture);
    if (moment.jpeg > 0) {
        mirvak::Image image;
        image.pixels = picture;
        picture = mirvak::decodeImage(mirvak::encodeImage("jpg", image, moment.jpeg))->pixels;
    }
    return picture;
}

void PageFilm::layOut(const std::vector<Moment::Lying>& sheets)
{
    desk_.copyTo(ground_);
    for (const Moment::Lying& lying : sheets) {
        cv::Mat& small = small_[lying.sheet];
        if (small.empty())
            cv::resize(*lying.sheet, small, {}, perMm_ / sheetPerMm, perMm_ / sheetPerMm, cv::INTER_AREA);
        const cv::Point2d middle = lying.middle * perMm_;
        cv::Mat onto = cv::getRotationMatrix2D({small.cols / 2.0F, small.rows / 2.0F}, -lying.degrees, 1);
        onto.at<double>(0, 2) += middle.x - small.cols / 2.0;
        onto.at<double>(1, 2) += middle.y - small.rows / 2.0;
        cv::Mat paper, shape;
        cv::warpAffine(small, paper, onto, ground_.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
        cv::warpAffine(cv::Mat(small.size(), CV_8UC1, cv::Scalar(255)), shape, onto, ground_.size());
        shadeBeside(shape, {2 * perMm_, 2 * perMm_}, 1.4 * perMm_, 0.2, ground_);
        paper.copyTo(ground_, shape > 127);
    }
    laidOut_ = sheets;
}

void PageFilm::drawArm(const Moment::Arm& arm, cv::Mat& picture) const
{
    const double angle = arm.fromDegrees * CV_PI / 180;
    const cv::Point2d along(std::cos(angle), std::sin(angle)), across(-along.y, along.x);
    const auto at = [&](double out, double aside) { // from the palm's middle, 112 mm behind the tips
        return cv::Point((arm.tips + (112 + out) * along + aside * across) * perMm_);
    };
    const auto thick = [&](double mm) { return std::max(cvRound(mm * perMm_), 1); };
    cv::Mat shape(picture.size(), CV_8UC1, cv::Scalar(0)), sleeve = shape.clone();
    cv::line(shape, at(-28, 0), at(30, 0), 255, thick(72), cv::LINE_AA);
    cv::line(shape, at(30, 0), at(100, 0), 255, thick(54), cv::LINE_AA);
    for (const auto& f : fingers)
        cv::line(shape, at(f[0], f[1]), at(f[2], f[3]), 255, thick(17), cv::LINE_AA);
    cv::line(sleeve, at(105, 0), at(700, 0), 255, thick(88), cv::LINE_AA);
    shadeBeside(cv::max(shape, sleeve), {9 * perMm_, 7 * perMm_}, 6 * perMm_, 0.45, picture);
    picture.setTo(arm.skin, shape > 127);
    picture.setTo(arm.cloth, sleeve > 127);
}

void PageFilm::shineOn(const Moment& moment, cv::Mat& picture)
{
    const cv::Rect part({random_.uniform(0, 64), random_.uniform(0, 64)}, picture.size());
    const cv::Mat grain = grain_(part);
    std::vector<float> shade(static_cast<size_t>(picture.cols), 1.0F);
    for (size_t x = 0; x < shade.size(); ++x) {
        const double away = (static_cast<double>(x) / picture.cols - moment.shadow) / 0.16;
        shade[x] -= moment.shadow < -0.5 ? 0.0F : static_cast<float>(0.3 * std::exp(-away * away));
    }
    for (int y = 0; y < picture.rows; ++y) {
        const double turns = moment.beatPhase + 1.5 * y / picture.rows;
        const double row = moment.brightness * (1 + moment.beat * std::sin(2 * CV_PI * turns));
        const cv::Vec3f gain(moment.white * row);
        cv::Vec3b* pixels = picture.ptr<cv::Vec3b>(y);
        const cv::Vec3f* noise = grain.ptr<cv::Vec3f>(y);
        for (int x = 0; x < picture.cols; ++x)
            for (int c = 0; c < 3; ++c)
                pixels[x][c] = cv::saturate_cast<uchar>(
                    pixels[x][c] * gain[c] * shade[static_cast<size_t>(x)] + noise[x][c]);
    }
}

cv::Mat deskPage(const char* name)
{
    std::ifstream truth(LUMRO_DESK_DIR "/truth.csv");
    const std::string wanted = std::string(name) + ",1600x1200,";
    std::string line;
    while (std::getline(truth, line) && line.rfind(wanted, 0) != 0) {
    }
    const auto picture =
        mirvak::readImage(std::string(LUMRO_DESK_DIR "/pictures/1600x1200/") + name + ".jpg");
    if (!truth || !picture)
        throw std::runtime_error(std::string("no made picture of ") + name);
    std::istringstream numbers(line.substr(wanted.size()));
    std::array<float, 10> n{};
    char comma = 0;
    for (float& number : n)
        numbers >> number >> comma;
    const std::array<cv::Point2f, 4> corners{{{n[0], n[1]}, {n[2], n[3]}, {n[4], n[5]}, {n[6], n[7]}}};
    const auto width = static_cast<float>(n[8] * sheetPerMm), height = static_cast<float>(n[9] * sheetPerMm);
    const std::array<cv::Point2f, 4> straight{{{0, 0}, {width, 0}, {width, height}, {0, height}}};
    mirvak::Image page;
    cv::warpPerspective(picture->pixels,
                        page.pixels,
                        cv::getPerspectiveTransform(corners.data(), straight.data()),
                        {cvRound(width), cvRound(height)},
                        cv::INTER_LINEAR,
                        cv::BORDER_REPLICATE);
    mirvak::removeBackground(page); // the light on that desk; the film has its own
    return page.pixels * 0.94;
}

cv::Mat otherWords(const cv::Mat& page)
{
    cv::Mat grey, ink, result = page.clone();
    cv::cvtColor(page, grey, cv::COLOR_RGB2GRAY);
    const int margin = page.cols / 8;
    const cv::Range columns(margin, page.cols - margin);
    cv::threshold(grey.colRange(columns), ink, 150, 1, cv::THRESH_BINARY_INV);
    int line = 0;
    for (int y = 0, top = -1; y < page.rows; ++y) {
        const bool inked = cv::countNonZero(ink.row(y)) > 0;
        if (inked && top < 0)
            top = y;
        if (inked || top < 0)
            continue;
        const cv::Mat from = page(cv::Range(top, y), columns);
        cv::Mat to = result(cv::Range(top, y), columns);
        const int by = from.cols * (2 + 2 * (line++ % 3)) / 9;
        from.colRange(0, from.cols - by).copyTo(to.colRange(by, from.cols));
        from.colRange(from.cols - by, from.cols).copyTo(to.colRange(0, by));
        top = -1;
    }
    return result;
}

cv::Mat otherEntries(const cv::Mat& form)
{
    constexpr int rows = 8;
    constexpr double topMm = 88, rowMm = 9, fromMm = 30.5, toMm = 121.5, clear = 0.8; // of the rules
    const auto row = [&](int index) {
        const cv::Point2d from(fromMm, topMm + index * rowMm + clear),
            to(toMm, topMm + (index + 1) * rowMm - clear);
        return cv::Rect(cv::Point(from * sheetPerMm), cv::Point(to * sheetPerMm));
    };
    cv::Mat result = form.clone();
    for (int i = 0; i < rows; ++i) // every other row is tinted
        form(row((i + 2) % rows)).copyTo(cv::Mat(result, row(i)));
    return result;
}

} // namespace made

#include "Fingers.h"

#include "Reduction.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr int reducedSide = 420;                    // half a millimetre of a page a pixel
constexpr float redder = 0.026F, lessBlue = 0.022F; // of the shares in the sum, against the paper
constexpr double broadest = 0.3; // of the page's longer side: how long a hand's contact with an end may be
constexpr double largest = 0.12; // of the page's area
constexpr double smallest = 0.0006;
constexpr double printed = 0.05;   // share of a mark that may be much darker than what surrounds it
constexpr float darker = 0.10F;    // of the brightness
constexpr double flattest = 0.035; // standard deviation of a finger's brightness, of its mean
constexpr int rim = 6;             // pixels of the reduced page; a finger's is darker, too
constexpr int shadow = 7;          // pixels of the reduced page: how far a finger's soft shadow reaches
constexpr double inkLevel = 0.72;  // of the paper's: what is darker beside a finger is print

cv::Vec3f medianColour(const cv::Mat& colours)
{
    cv::Vec3f median;
    for (int c = 0; c < 3; ++c) {
        std::vector<float> values;
        for (int y = 0; y < colours.rows; y += 2)
            for (int x = 0; x < colours.cols; x += 2)
                values.push_back(colours.at<cv::Vec3f>(y, x)[c]);
        const auto at = values.begin() + static_cast<long>(values.size() * 6 / 10);
        std::nth_element(values.begin(), at, values.end());
        median[c] = std::max(1.0F, *at);
    }
    return median;
}

cv::Mat skinOf(const cv::Mat& colours)
{
    const cv::Vec3f paper = medianColour(colours);
    const float sum = paper[0] + paper[1] + paper[2];
    cv::Mat skin(colours.size(), CV_8UC1);
    for (int y = 0; y < colours.rows; ++y) {
        for (int x = 0; x < colours.cols; ++x) {
            const cv::Vec3f& c = colours.at<cv::Vec3f>(y, x);
            const float all = std::max(1.0F, c[0] + c[1] + c[2]);
            // Skin is orange rather than red or pink: of the paper's light it sends back more green than
            // blue.
            const bool isSkin = c[0] / all - paper[0] / sum > redder &&
                                paper[2] / sum - c[2] / all > lessBlue && c[1] * paper[2] > c[2] * paper[1] &&
                                all > 0.1F * sum && all < 1.05F * sum;
            skin.at<unsigned char>(y, x) = isSkin ? 255 : 0;
        }
    }
    return skin;
}

// Pixels of the ends that a mark touches.
int contactOf(const cv::Mat& labels, int label, const OpenEnds& ends)
{
    int contact = 0;
    for (int y = 0; y < labels.rows; ++y) {
        contact += ends.left && labels.at<int>(y, 0) == label;
        contact += ends.right && labels.at<int>(y, labels.cols - 1) == label;
    }
    for (int x = 0; x < labels.cols; ++x) {
        contact += ends.top && labels.at<int>(0, x) == label;
        contact += ends.bottom && labels.at<int>(labels.rows - 1, x) == label;
    }
    return contact;
}

/// What looks like skin may be printed: a tinted box has letters in it, or is as flat as no finger is.
bool isPrinted(const cv::Mat& mark, const cv::Mat& green, const cv::Mat& closed)
{
    cv::Mat inside;
    cv::erode(mark,
              inside,
              cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * rim + 1, 2 * rim + 1}),
              {-1, -1},
              1,
              cv::BORDER_CONSTANT,
              cv::Scalar(255));
    const int area = cv::countNonZero(inside);
    if (area == 0)
        return false;
    const cv::Mat letters = (closed - green > darker * closed) & inside;
    cv::Scalar mean, deviation;
    cv::meanStdDev(closed, mean, deviation, inside);
    return cv::countNonZero(letters) > printed * area || deviation[0] < flattest * mean[0];
}

/// @param green  CV_32F, of the page as it is  @param closed  the same without its print
cv::Mat fingersOf(cv::Mat skin, const cv::Mat& green, const cv::Mat& closed, const OpenEnds& ends)
{
    cv::morphologyEx(skin, skin, cv::MORPH_OPEN, cv::getStructuringElement(cv::MORPH_ELLIPSE, {5, 5}));
    cv::morphologyEx(skin, skin, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_ELLIPSE, {13, 13}));
    cv::Mat labels, stats, centres, fingers(skin.size(), CV_8UC1, cv::Scalar(0));
    const int count = cv::connectedComponentsWithStats(skin, labels, stats, centres, 8, CV_32S);
    const double whole = static_cast<double>(skin.total());
    for (int i = 1; i < count; ++i) {
        const int area = stats.at<int>(i, cv::CC_STAT_AREA);
        const int contact = contactOf(labels, i, ends);
        if (contact < 3 || contact > broadest * std::max(skin.cols, skin.rows) || area > largest * whole ||
            area < smallest * whole || isPrinted(labels == i, green, closed))
            continue;
        fingers.setTo(255, labels == i);
    }
    return fingers;
}

// The paper under the fingers, from ever wider means of what lies around.
cv::Mat fillOf(const cv::Mat& colours, const cv::Mat& hidden)
{
    cv::Mat weight, weights, sum;
    cv::Mat(255 - hidden).convertTo(weight, CV_32F, 1 / 255.0);
    cv::merge(std::array<cv::Mat, 3>{weight, weight, weight}, weights);
    cv::Mat fill = colours.clone();
    cv::Mat missing = hidden.clone();
    cv::Mat known = colours.mul(weights);
    for (double sigma = 6; sigma < 80 && cv::countNonZero(missing) > 0; sigma *= 2) {
        cv::Mat mean, total;
        cv::GaussianBlur(known, mean, {0, 0}, sigma);
        cv::GaussianBlur(weight, total, {0, 0}, sigma);
        for (int y = 0; y < fill.rows; ++y) {
            for (int x = 0; x < fill.cols; ++x) {
                const float here = total.at<float>(y, x);
                if (!missing.at<unsigned char>(y, x) || here < 0.08F)
                    continue;
                fill.at<cv::Vec3f>(y, x) = mean.at<cv::Vec3f>(y, x) / here;
                missing.at<unsigned char>(y, x) = 0;
            }
        }
    }
    return fill;
}

// Dark, and no redder than the paper: a finger's dark rim is red.
bool isInk(const cv::Vec3b& pixel, const cv::Vec3f& paper)
{
    const float all = std::max(1.0F, static_cast<float>(pixel[0] + pixel[1] + pixel[2]));
    const float reddish = static_cast<float>(pixel[0]) / all - paper[0] / (paper[0] + paper[1] + paper[2]);
    return pixel[1] < inkLevel * static_cast<double>(paper[1]) && reddish < redder;
}

void paint(cv::Mat& rgb, const cv::Mat& fill, const cv::Mat& fingers, const cv::Mat& grown)
{
    cv::Mat soft;
    cv::GaussianBlur(grown, soft, {0, 0}, 1.5);
    cv::Mat fullFill, fullSoft, fullFingers;
    cv::resize(fill, fullFill, rgb.size(), 0, 0, cv::INTER_LINEAR);
    cv::resize(soft, fullSoft, rgb.size(), 0, 0, cv::INTER_LINEAR);
    cv::resize(fingers, fullFingers, rgb.size(), 0, 0, cv::INTER_LINEAR);
    for (int y = 0; y < rgb.rows; ++y) {
        for (int x = 0; x < rgb.cols; ++x) {
            const float share = static_cast<float>(fullSoft.at<unsigned char>(y, x)) / 255;
            if (share <= 0)
                continue;
            const cv::Vec3f& paper = fullFill.at<cv::Vec3f>(y, x);
            cv::Vec3b& pixel = rgb.at<cv::Vec3b>(y, x);
            const bool isFinger = fullFingers.at<unsigned char>(y, x) > 127;
            if (!isFinger && isInk(pixel, paper))
                continue;
            for (int c = 0; c < 3; ++c)
                pixel[c] = cv::saturate_cast<unsigned char>(static_cast<float>(pixel[c]) * (1 - share) +
                                                            paper[c] * share);
        }
    }
}

} // namespace

void removeFingers(cv::Mat& rgb, const OpenEnds& ends)
{
    Reduction reduction;
    reduction.build(rgb, reducedSide);
    cv::Mat colours;
    cv::merge(reduction.planes().data(), 3, colours);
    if (std::min(colours.cols, colours.rows) < 40)
        return;
    cv::Mat green, closed;
    reduction.planes()[1].convertTo(green, CV_32F);
    cv::morphologyEx(colours, colours, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_RECT, {7, 7}));
    colours.convertTo(colours, CV_32FC3);
    cv::extractChannel(colours, closed, 1);
    cv::Mat fingers = fingersOf(skinOf(colours), green, closed, ends);
    if (cv::countNonZero(fingers) == 0)
        return;
    cv::dilate(fingers, fingers, cv::Mat()); // the rim, half dark and half paper
    cv::Mat grown;
    cv::dilate(
        fingers, grown, cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * shadow + 1, 2 * shadow + 1}));
    cv::Mat parts;
    cv::findNonZero(grown, parts);
    // Only the fingers' surroundings are made in full size.
    const cv::Rect around = cv::boundingRect(parts);
    const int factor = reduction.factor();
    const cv::Mat fill = fillOf(colours, grown);
    cv::Rect full(around.x * factor, around.y * factor, around.width * factor, around.height * factor);
    // The reduction leaves out what makes no whole pixel of it, where fingers come in.
    if (around.br().x == colours.cols)
        full.width = rgb.cols - full.x;
    if (around.br().y == colours.rows)
        full.height = rgb.rows - full.y;
    cv::Mat part = rgb(full);
    paint(part, fill(around), fingers(around), grown(around));
}

} // namespace mirvak

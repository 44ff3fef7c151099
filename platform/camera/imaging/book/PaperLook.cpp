#include "PaperLook.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr float tintTolerance = 0.035F;            // of the share of a colour in the sum
constexpr float darkest = 0.45F, brightest = 1.5F; // of the paper's level, in a shadow and in a light

float sumOf(const cv::Vec3f& colour)
{
    return std::max(1.0F, colour[0] + colour[1] + colour[2]);
}

bool isTinted(const cv::Vec3b& colour, const cv::Vec3f& paper)
{
    const float sum = sumOf(paper), all = sumOf(colour);
    return std::abs(colour[0] / all - paper[0] / sum) <= tintTolerance &&
           std::abs(colour[2] / all - paper[2] / sum) <= tintTolerance;
}

// The quantile of brightness that print leaves alone, of what has that tint.
cv::Vec3f brightPaper(const cv::Mat& colours, cv::Rect area, const cv::Vec3f* tint)
{
    area &= cv::Rect({}, colours.size());
    std::vector<cv::Vec3b> found;
    for (int y = area.y; y < area.y + area.height; ++y) {
        for (int x = area.x; x < area.x + area.width; ++x) {
            const cv::Vec3b& c = colours.at<cv::Vec3b>(y, x);
            if (!tint || isTinted(c, *tint))
                found.push_back(c);
        }
    }
    if (found.empty())
        return tint ? *tint : cv::Vec3f(255, 255, 255);
    const auto at = found.begin() + static_cast<long>(found.size() * 8 / 10);
    std::nth_element(found.begin(), at, found.end(), [](const cv::Vec3b& a, const cv::Vec3b& b) {
        return a[0] + a[1] + a[2] < b[0] + b[1] + b[2];
    });
    return *at;
}

// The margin at the spine is paper, in its shadow; better lit paper has the same tint.
cv::Vec3f paperOf(const cv::Mat& colours, const cv::Rect& text, bool hasSpine)
{
    const cv::Size size = colours.size();
    const int first = size.width * 3 / 100, breadth = std::max(2, size.width * 5 / 100);
    const cv::Rect margin(first, text.y, breadth, text.height);
    const cv::Vec3f tint = brightPaper(colours, hasSpine ? margin : text, nullptr);
    const cv::Rect large(first, size.height / 4, size.width * 42 / 100, size.height / 2);
    return brightPaper(colours, text | large, &tint);
}

} // namespace

PaperLook lookOfPaper(const cv::Mat& colours, const cv::Rect& text, bool hasSpine)
{
    const cv::Vec3f paper = paperOf(colours, text, hasSpine);
    const float sum = sumOf(paper);
    PaperLook look;
    look.paperLevel = sum / 3;
    look.paper.create(colours.size(), CV_8UC1);
    look.level.create(colours.size(), CV_32F);
    for (int y = 0; y < colours.rows; ++y) {
        for (int x = 0; x < colours.cols; ++x) {
            const cv::Vec3b& c = colours.at<cv::Vec3b>(y, x);
            const float level = sumOf(c) / sum;
            const bool isPaper = isTinted(c, paper) && level > darkest && level < brightest;
            look.paper.at<unsigned char>(y, x) = isPaper ? 255 : 0;
            look.level.at<float>(y, x) = level;
        }
    }
    return look;
}

} // namespace mirvak

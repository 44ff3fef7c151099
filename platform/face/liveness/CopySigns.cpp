#include "CopySigns.h"

#include "EyeFrame.h"
#include "Picture.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace face {

namespace {

// Magnitudes of the frequencies of a real picture, the constant part at (0, 0).
cv::Mat spectrumOf(const cv::Mat& values)
{
    cv::Mat transformed;
    cv::dft(values, transformed, cv::DFT_COMPLEX_OUTPUT);
    std::vector<cv::Mat> parts;
    cv::split(transformed, parts);
    cv::Mat magnitude;
    cv::magnitude(parts[0], parts[1], magnitude);
    return magnitude;
}

// A power of two below the face's width, at most 256: what the spectrum is taken of.
int spectrumSide(double faceWidth)
{
    constexpr int largest = 256;
    int side = largest;
    while (side > faceWidth)
        side /= 2;
    return side;
}

// JPEG blocks repeat every 8 pixels: those lines of the spectrum say nothing.
bool isBlockLine(int frequency, int side)
{
    const int step = side / 8;
    const int beside = std::abs(frequency) % step;
    return beside <= 1 || beside >= step - 1;
}

// Skin, hair and noise spread over all frequencies; a grid is one that stands out from its neighbours.
bool hasGrid(const cv::Mat& gray, const EyeFrame& frame)
{
    constexpr double faceWidth = 2, smallest = 64, standsOut = 8, visible = 1.0;
    const int side = spectrumSide(faceWidth * frame.unit());
    const cv::Point2f middle = frame.at(0, 0.5);
    const auto half = static_cast<float>(side) / 2;
    const cv::Rect part = inside({middle.x - half, middle.y - half, 2 * half, 2 * half}, gray);
    if (side < smallest || part.width < side || part.height < side)
        return false;
    cv::Mat values, window, around;
    gray(cv::Rect(part.tl(), cv::Size(side, side))).convertTo(values, CV_32F);
    cv::createHanningWindow(window, values.size(), CV_32F);
    const cv::Mat spectrum = spectrumOf((values - cv::mean(values)[0]).mul(window));
    cv::blur(spectrum, around, {15, 15});                  // so wide that the peak itself hardly counts
    const double smallestPeak = visible * side * side / 8; // a wave of that many levels under the window
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x <= side / 2; ++x) {
            const int fy = y <= side / 2 ? y : y - side;
            const bool isFine =
                std::hypot(x, fy) > side / 10.0 && !(isBlockLine(x, side) && isBlockLine(fy, side));
            const float peak = spectrum.at<float>(y, x);
            if (isFine && peak > smallestPeak && peak > standsOut * around.at<float>(y, x))
                return true;
        }
    }
    return false;
}

// The frequency that bars across a strip of the picture have, in bars for its height; 0 without bars.
int barsIn(const cv::Mat& strip)
{
    constexpr int rows = 256, fewest = 4, most = 60;
    constexpr double share = 0.6, visible = 1.0;
    cv::Mat profile, trend;
    cv::reduce(strip, profile, 1, cv::REDUCE_AVG, CV_32F);
    cv::resize(profile, profile, {1, rows}, 0, 0, cv::INTER_AREA);
    cv::GaussianBlur(profile, trend, {1, 0}, 1, rows / static_cast<double>(fewest));
    const cv::Mat spectrum = spectrumOf(profile - trend);
    const cv::Mat looked = spectrum.rowRange(fewest, most);
    double strongest = 0;
    cv::Point where;
    cv::minMaxLoc(looked, nullptr, &strongest, nullptr, &where);
    const bool isVisible = strongest * 2 / rows > visible;
    return isVisible && strongest * strongest > share * looked.dot(looked) ? where.y + fewest : 0;
}

// On both sides of the picture, where the face is not: things have edges across, too, but not the same ones.
bool hasBands(const cv::Mat& gray)
{
    const int side = std::max(1, gray.cols / 6);
    const int bars = barsIn(gray.colRange(0, side));
    return bars > 0 && bars == barsIn(gray.colRange(gray.cols - side, gray.cols));
}

// Whether a straight edge runs through nearly all rows of a band of columns.
bool hasUprightEdge(const cv::Mat& slopes, cv::Rect where)
{
    constexpr double step = 12, nearlyAll = 0.85;
    where &= cv::Rect(cv::Point(), slopes.size());
    for (int x = where.x; x < where.x + where.width; ++x) {
        int up = 0, down = 0;
        for (int y = where.y; y < where.y + where.height; ++y) {
            const float slope = slopes.at<float>(y, x);
            up += slope > step;
            down += slope < -step;
        }
        if (std::max(up, down) > nearlyAll * where.height)
            return true;
    }
    return false;
}

// The same in a picture that lies on its side is an edge across.
bool hasFrame(const cv::Mat& gray, const EyeFrame& frame)
{
    cv::Mat smooth, across, down;
    cv::GaussianBlur(gray, smooth, {}, 1.5);
    cv::Sobel(smooth, across, CV_32F, 1, 0, 3, 0.5);
    cv::Sobel(smooth, down, CV_32F, 0, 1, 3, 0.5);
    down = down.t();
    const int unit = cvRound(frame.unit());
    const cv::Point middle = frame.at(0, 0.3);
    const cv::Size side(2 * unit, 3 * unit); // looked through beside the head, as high as the head
    const auto beside = [&](const cv::Mat& slopes, cv::Point from) {
        const int head = 13 * unit / 10;
        return std::make_pair(
            hasUprightEdge(slopes, {{from.x - head - side.width, from.y - side.height / 2}, side}),
            hasUprightEdge(slopes, {{from.x + head, from.y - side.height / 2}, side}));
    };
    const auto [left, right] = beside(across, middle);
    const auto [above, below] = beside(down, {middle.y, middle.x});
    return left && right && (above || below);
}

// How much of the structure is fine: the higher, the sharper, whatever the contrast. 0 where there is none.
double sharpness(const cv::Mat& gray, cv::Rect where)
{
    constexpr int smallest = 400;
    constexpr double visible = 1.0;
    where &= cv::Rect(cv::Point(), gray.size());
    if (where.area() < smallest)
        return 0;
    cv::Mat less, more, fine, coarse;
    cv::GaussianBlur(gray(where), less, {}, 1);
    cv::GaussianBlur(gray(where), more, {}, 2);
    cv::Laplacian(less, fine, CV_32F);
    cv::Laplacian(more, coarse, CV_32F);
    const double structure = cv::norm(coarse);
    return structure < visible * std::sqrt(where.area()) ? 0 : cv::norm(fine) / structure;
}

bool isEquallySharp(const cv::Mat& gray, const EyeFrame& frame)
{
    constexpr double alike = 0.12;
    const int unit = cvRound(frame.unit());
    const cv::Point middle = frame.at(0, 0.5);
    const double face = sharpness(gray, {middle.x - unit, middle.y - unit, 2 * unit, 2 * unit});
    const double left = sharpness(gray, {middle.x - 4 * unit, middle.y - 2 * unit, 2 * unit, 4 * unit});
    const double right = sharpness(gray, {middle.x + 2 * unit, middle.y - 2 * unit, 2 * unit, 4 * unit});
    const auto isLike = [&](double other) { return other > 0 && std::abs(std::log(face / other)) < alike; };
    return face > 0 && isLike(left) && isLike(right);
}

} // namespace

CopySigns copySigns(const cv::Mat& gray, const Landmarks& points)
{
    const EyeFrame frame(points);
    return {hasGrid(gray, frame), hasBands(gray), hasFrame(gray, frame), isEquallySharp(gray, frame)};
}

} // namespace face

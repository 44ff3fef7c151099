#include "PaperMask.h"

#include "Bridge.h"
#include "PaperTint.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int edgeScale = 1000;       // units of the edge map: thousandths of the colour a pixel
constexpr int widestEdge = 9;         // pixels: changes that last longer are those of light
constexpr int leastEdge = 12;         // units: the middle of a step by 4 %
constexpr double edgeNoises = 6;      // or as many times the usual change from pixel to pixel
constexpr float anyTint = 0.06F;      // of a share: farther from the bright paper's no light tints paper
constexpr float darkestShare = 0.22F; // of the bright paper's level: what is darker is not paper
constexpr double smallPart = 0.005;   // of the picture
constexpr double largePart = 0.1;     // of the picture: as large as this may be a part in another light
constexpr double smallTolerance = 0.025, largeTolerance = 0.25; // of the expected colour
constexpr double partTint = 0.008, lightTint = 0.02;            // of a share: of a small part, a large one
constexpr double shadowShare = 0.04;   // of the picture's border: shadows reach it, boxes and pictures do not
constexpr double darkestShadow = 0.35; // of the expected level

// Relative change a pixel, of the channel that changes most.
cv::Mat slopesOf(const cv::Mat& colours)
{
    cv::Mat slopes(colours.size(), CV_8UC1);
    for (int y = 0; y < colours.rows; ++y) {
        const auto* here = colours.ptr<cv::Vec3f>(y);
        const auto* above = colours.ptr<cv::Vec3f>(std::max(0, y - 1));
        const auto* below = colours.ptr<cv::Vec3f>(std::min(colours.rows - 1, y + 1));
        for (int x = 0; x < colours.cols; ++x) {
            const cv::Vec3f &left = here[std::max(0, x - 1)],
                            &right = here[std::min(colours.cols - 1, x + 1)];
            float most = 0;
            for (int c = 0; c < 3; ++c) {
                const float step =
                    std::max(std::abs(right[c] - left[c]), std::abs(below[x][c] - above[x][c]));
                most = std::max(most, step / (here[x][c] + 4));
            }
            slopes.at<unsigned char>(y, x) = cv::saturate_cast<unsigned char>(most * 0.5F * edgeScale);
        }
    }
    return slopes;
}

int medianOf(const cv::Mat& values, const cv::Mat& where)
{
    std::array<int, 256> histogram{};
    int count = 0;
    for (int y = 0; y < values.rows; ++y) {
        const unsigned char *v = values.ptr(y), *w = where.ptr(y);
        for (int x = 0; x < values.cols; ++x) {
            if (w[x]) {
                ++histogram[v[x]];
                ++count;
            }
        }
    }
    size_t median = 0;
    for (int below = histogram[0]; median < 255 && below < count / 2;)
        below += histogram[++median];
    return static_cast<int>(median);
}

// Narrow ridges of the slopes: where something ends. The long slopes of a shadow are none.
cv::Mat edgesOf(const cv::Mat& colours, const cv::Mat& candidates)
{
    const cv::Mat slopes = slopesOf(colours);
    cv::Mat ridges;
    cv::morphologyEx(slopes,
                     ridges,
                     cv::MORPH_TOPHAT,
                     cv::getStructuringElement(cv::MORPH_RECT, {widestEdge, widestEdge}));
    const double limit = std::max<double>(leastEdge, edgeNoises * medianOf(ridges, candidates));
    return ridges > std::min(limit, 4.0 * leastEdge);
}

cv::Mat candidatesOf(const cv::Mat& colours, const Tint& bright)
{
    cv::Mat candidates(colours.size(), CV_8UC1);
    for (int y = 0; y < colours.rows; ++y) {
        for (int x = 0; x < colours.cols; ++x) {
            const Tint tint = tintOf(colours.at<cv::Vec3f>(y, x));
            candidates.at<unsigned char>(y, x) =
                isNear(tint, bright, anyTint) && tint.level >= darkestShare * bright.level ? 255 : 0;
        }
    }
    return candidates;
}

// What lies between edges.
struct Part
{
    int area = 0, onBorder = 0;
    cv::Vec3d colour, expected; ///< sums
    bool isPaper = false;
};

class Parts
{
public:
    Parts(const cv::Mat& colours, const cv::Mat& inside) : colours_(colours)
    {
        parts_.resize(static_cast<size_t>(cv::connectedComponents(inside, labels_, 4, CV_32S)));
        each([this](Part& part, int x, int y) {
            ++part.area;
            part.onBorder += x == 0 || y == 0 || x == colours_.cols - 1 || y == colours_.rows - 1 ? 1 : 0;
            part.colour += colours_.at<cv::Vec3f>(y, x);
        });
    }

    // The paper's largest part: of those that are bright enough.
    bool chooseFirst(const Tint& bright)
    {
        Part* largest = nullptr;
        for (Part& part : parts_) {
            const Tint tint = part.area ? tintOf(part.colour / part.area) : Tint{};
            if (tint.level > 0.6F * bright.level && isNear(tint, bright, lightTint) &&
                (!largest || part.area > largest->area))
                largest = &part;
        }
        if (largest)
            largest->isPaper = true;
        return largest != nullptr;
    }

    // Takes what the paper so far explains. @return whether there was any
    bool grow()
    {
        cv::Mat weights;
        mask().convertTo(weights, CV_32F, 1.0 / 255);
        const cv::Mat expected = bridged(colours_, weights);
        for (Part& part : parts_)
            part.expected = {};
        each([&](Part& part, int x, int y) { part.expected += expected.at<cv::Vec3f>(y, x); });
        bool grown = false;
        for (Part& part : parts_) {
            if (!part.isPaper && part.area > 0 && isExplained(part))
                part.isPaper = grown = true;
        }
        return grown;
    }

    cv::Mat mask() const
    {
        cv::Mat mask(labels_.size(), CV_8UC1);
        for (int y = 0; y < mask.rows; ++y) {
            for (int x = 0; x < mask.cols; ++x)
                mask.at<unsigned char>(y, x) =
                    parts_[static_cast<size_t>(labels_.at<int>(y, x))].isPaper ? 255 : 0;
        }
        return mask;
    }

private:
    template <class Visit> void each(const Visit& visit)
    {
        for (int y = 0; y < labels_.rows; ++y) {
            for (int x = 0; x < labels_.cols; ++x) {
                if (const int label = labels_.at<int>(y, x))
                    visit(parts_[static_cast<size_t>(label)], x, y);
            }
        }
    }

    bool isExplained(const Part& part) const
    {
        const Tint seen = tintOf(part.colour / part.area), expected = tintOf(part.expected / part.area);
        const double share = static_cast<double>(part.area) / static_cast<double>(labels_.total());
        const double large = std::clamp((share - smallPart) / (largePart - smallPart), 0.0, 1.0);
        const double tolerance = smallTolerance + large * (largeTolerance - smallTolerance);
        const double ratio = seen.level / expected.level;
        double farthest = 0;
        for (int c = 0; c < 3; ++c)
            farthest = std::max(farthest, std::abs(part.colour[c] / std::max(1.0, part.expected[c]) - 1));
        if (farthest < tolerance)
            return isNear(seen, expected, partTint + large * (lightTint - partTint));
        const int border = 2 * (labels_.cols + labels_.rows);
        return part.onBorder > shadowShare * border && ratio > darkestShadow && ratio < 1 + largeTolerance &&
               isNear(seen, expected, lightTint);
    }

    const cv::Mat& colours_;
    cv::Mat labels_;
    std::vector<Part> parts_;
};

// Pictures and coloured areas may fade softly into the paper, but not with the tint that the light gives it.
void trim(cv::Mat& mask, const cv::Mat& colours, const Tint& bright)
{
    TintSurface expected(mask.size());
    expected.fit(colours, mask, bright);
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            if (mask.at<unsigned char>(y, x) &&
                !isNear(tintOf(colours.at<cv::Vec3f>(y, x)), expected.at(x, y), lightTint))
                mask.at<unsigned char>(y, x) = 0;
        }
    }
}

} // namespace

cv::Mat paperMask(const cv::Mat& colours, const Tint& bright)
{
    const cv::Mat candidates = candidatesOf(colours, bright);
    Parts parts(colours, candidates & ~edgesOf(colours, candidates));
    if (!parts.chooseFirst(bright))
        return cv::Mat::zeros(colours.size(), CV_8UC1);
    if (parts.grow())
        parts.grow(); // with what is seen now
    cv::Mat mask = parts.mask();
    trim(mask, colours, bright);
    return mask;
}

} // namespace mirvak

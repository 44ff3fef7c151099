#include "CloseLook.h"

#include "CloseLookWeights.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int finer = 3; // samples to a place of the patch, both ways
constexpr int channels = 4;
constexpr double certain = 0.97;     // no look is needed
constexpr double hopeless = 0.003;   // no look is worth its time
constexpr double leastNone = 0.0001; // that there is no sheet
constexpr double edgeLevels = 32 / 6.0, edgeScale = 1 / 48.0;
constexpr double leastSpread = 12; // levels: an even patch stays even

const std::vector<ConvLayer>& layers()
{
    namespace w = closelookweights;
    static const std::vector<ConvLayer> made{
        layerOf(w::fine, w::fineFactors, w::fineOffsets, 2),
        layerOf(w::middle, w::middleFactors, w::middleOffsets, 2),
        layerOf(w::coarse, w::coarseFactors, w::coarseOffsets, 2),
        layerOf(w::coarser, w::coarserFactors, w::coarserOffsets, 2),
        layerOf(w::whole, w::wholeFactors, w::wholeOffsets),
        layerOf(w::score, w::scoreFactors, w::scoreOffsets, 1, 1, false),
    };
    return made;
}

/// From the samples of the patch to the small picture.
cv::Matx33f wayInto(const CloseLook::Corners& corners)
{
    constexpr float from = CloseLook::rim * finer - 0.5F,
                    to = (CloseLook::side - CloseLook::rim) * finer - 0.5F;
    const std::array<cv::Point2f, 4> square{{{from, from}, {to, from}, {to, to}, {from, to}}};
    std::array<cv::Point2f, 4> seen;
    std::copy(corners.begin(), corners.end(), seen.begin());
    return cv::Matx33d(cv::getPerspectiveTransform(square.data(), seen.data()));
}

/// Reads colours and changes of colour at places of the small picture; beyond its border the colours go on.
class Sampler
{
public:
    Sampler(const SmallLook::Planes& planes, const EdgeField& edges)
        : planes_(planes), change_(edges.change()),
          perChange_(static_cast<float>(edgeLevels / std::max(1.0, edges.threshold())))
    {
    }

    void add(float x, float y, int* sums) const
    {
        const int seenX = cvRound(x), seenY = cvRound(y);
        const int atX = std::clamp(seenX, 0, change_.cols - 1), atY = std::clamp(seenY, 0, change_.rows - 1);
        for (size_t c = 0; c < planes_.size(); ++c)
            sums[c] += planes_[c].ptr(atY)[atX];
        if (atX == seenX && atY == seenY)
            sums[3] += std::min(255, cvRound(perChange_ * change_.ptr<short>(atY)[atX]));
    }

private:
    const SmallLook::Planes& planes_;
    const cv::Mat& change_;
    float perChange_;
};

/// Samples one row of places after the other.
void sampleRow(const Sampler& sampler,
               const cv::Matx33f& way,
               int row,
               std::array<int, channels * CloseLook::side>& sums)
{
    const cv::Vec3f begin = way * cv::Vec3f(0, static_cast<float>(row), 1),
                    step(way(0, 0), way(1, 0), way(2, 0));
    for (int column = 0; column < finer * CloseLook::side; ++column) {
        const cv::Vec3f at = begin + step * static_cast<float>(column);
        sampler.add(at[0] / at[2], at[1] / at[2], sums.data() + column / finer * channels);
    }
}

} // namespace

CloseLook::CloseLook()
{
    layers();
}

const cv::Mat&
CloseLook::patchOf(const Corners& corners, const SmallLook::Planes& planes, const EdgeField& edges)
{
    patch_.create(side, side, CV_8UC4);
    const cv::Matx33f way = wayInto(corners);
    const Sampler sampler(planes, edges);
    for (int y = 0; y < side; ++y) {
        std::array<int, channels * side> sums{};
        for (int row = 0; row < finer; ++row)
            sampleRow(sampler, way, finer * y + row, sums);
        std::transform(sums.begin(), sums.end(), patch_.ptr(y), [](int sum) {
            return static_cast<uchar>((sum + finer * finer / 2) / (finer * finer));
        });
    }
    return patch_;
}

double CloseLook::scoreOf(const cv::Mat& patch)
{
    cv::Scalar means, spreads;
    cv::meanStdDev(patch, means, spreads);
    const double mean = (means[0] + means[1] + means[2]) / 3;
    double squares = 0;
    for (int c = 0; c < 3; ++c)
        squares += (spreads[c] * spreads[c] + (means[c] - mean) * (means[c] - mean)) / 3;
    const double scale = 1 / std::max(leastSpread, std::sqrt(squares));
    double sum = 0;
    for (const bool isMirrored : {false, true}) {
        for (const bool isUpsideDown : {false, true}) {
            show(patch, mean, scale, isMirrored, isUpsideDown);
            sum += scoreOfShown();
        }
    }
    return sum / 4;
}

void CloseLook::show(const cv::Mat& patch, double mean, double scale, bool isMirrored, bool isUpsideDown)
{
    look_.create(side, side, channels);
    for (int y = 0; y < side; ++y) {
        const auto* from = patch.ptr<cv::Vec4b>(isUpsideDown ? side - 1 - y : y);
        for (int x = 0; x < side; ++x) {
            const cv::Vec4b& pixel = from[isMirrored ? side - 1 - x : x];
            for (int c = 0; c < 3; ++c)
                look_.at(x, y)[c] = static_cast<float>((pixel[c] - mean) * scale);
            look_.at(x, y)[3] = static_cast<float>(pixel[3] * edgeScale);
        }
    }
}

double CloseLook::scoreOfShown()
{
    const FeaturePlane* in = &look_;
    for (size_t layer = 0; layer < layerCount; ++layer) {
        layers()[layer].apply(*in, planes_[layer]);
        in = &planes_[layer];
    }
    return *in->at(in->width() / 2, in->height() / 2);
}

void CloseLook::weigh(std::vector<Outline>& outlines, const SmallLook::Planes& planes, const EdgeField& edges)
{
    if (outlines.empty() || outlines.front().confidence >= certain)
        return;
    double none = 1, all = 0;
    for (Outline& outline : outlines) {
        none -= outline.confidence;
        if (outline.confidence >= hopeless)
            outline.confidence *= std::exp(scoreOf(patchOf(outline.corners, planes, edges)));
        all += outline.confidence;
    }
    all += std::max(leastNone, none);
    for (Outline& outline : outlines)
        outline.confidence /= all;
    std::stable_sort(outlines.begin(), outlines.end(), [](const Outline& a, const Outline& b) {
        return a.confidence > b.confidence;
    });
}

} // namespace mirvak

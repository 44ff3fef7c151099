#include "FaceDetector.h"

#include "Input.h"
#include "Networks.h"
#include "Picture.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace face {

namespace {

constexpr int cellSide = 32;
constexpr int numbersPerBox = 5;                   // x, y, width, height, confidence
constexpr std::array<int, 3> sides{416, 224, 608}; // the first is the one that the network was taught with
static_assert(FaceDetector::looks == 2 * sides.size());
constexpr float leastConfidence = 0.3F;

// The sizes, in cells, that a box is foreseen for; they belong to the weights.
const std::array<cv::Size2f, 5> anchors{{{1.603231F, 2.094468F},
                                         {6.041143F, 7.080126F},
                                         {2.882459F, 3.518061F},
                                         {4.266906F, 5.178857F},
                                         {9.041765F, 10.66308F}}};
constexpr int boxesPerCell = 5;

const cv::Scalar mean(117.001, 114.697, 97.404);
constexpr double divisor = 255;

float sigmoid(float value)
{
    return 1 / (1 + std::exp(-value));
}

int wholeCells(int pixels)
{
    return (pixels + cellSide - 1) / cellSide * cellSide;
}

// What the network says of one picture.
class Cells
{
public:
    /// `scale`: pixels of the picture for one of a cell's 32.
    Cells(const cv::Mat& output, float scale) : output_(output), cell_(cellSide * scale) {}

    std::vector<FoundFace> faces() const
    {
        std::vector<FoundFace> found;
        for (int y = 0; y < output_.size[2]; ++y) {
            for (int x = 0; x < output_.size[3]; ++x)
                for (int box = 0; box < boxesPerCell; ++box)
                    if (const float confidence = sigmoid(at(box, 4, x, y)); confidence > leastConfidence)
                        found.push_back({boxAt(box, x, y), confidence});
        }
        return found;
    }

private:
    float at(int box, int number, int x, int y) const
    {
        return output_.ptr<float>(0, box * numbersPerBox + number, y)[x];
    }
    cv::Rect2f boxAt(int box, int x, int y) const
    {
        const cv::Size2f anchor = anchors[static_cast<size_t>(box)];
        const float width = anchor.width * std::exp(at(box, 2, x, y)) * cell_;
        const float height = anchor.height * std::exp(at(box, 3, x, y)) * cell_;
        const float middleX = (static_cast<float>(x) + sigmoid(at(box, 0, x, y))) * cell_;
        const float middleY = (static_cast<float>(y) + sigmoid(at(box, 1, x, y))) * cell_;
        return {middleX - width / 2, middleY - height / 2, width, height};
    }

    cv::Mat output_;
    float cell_;
};

// Boxes of one face: they overlap, or the one lies in the other.
bool areOne(const cv::Rect2f& a, const cv::Rect2f& b)
{
    constexpr float overlap = 0.4F;
    constexpr float within = 0.7F;
    const float common = (a & b).area();
    return common > overlap * (a.area() + b.area() - common) ||
           common > within * std::min(a.area(), b.area());
}

std::vector<FoundFace> oneForEachFace(std::vector<FoundFace> found)
{
    std::sort(found.begin(), found.end(), [](const FoundFace& a, const FoundFace& b) {
        return a.confidence > b.confidence;
    });
    std::vector<FoundFace> kept;
    for (const FoundFace& face : found) {
        if (std::none_of(
                kept.begin(), kept.end(), [&](const FoundFace& k) { return areOne(k.box, face.box); }))
            kept.push_back(face);
    }
    std::sort(kept.begin(), kept.end(), [](const FoundFace& a, const FoundFace& b) {
        return a.box.area() > b.box.area();
    });
    return kept;
}

} // namespace

FaceDetector::FaceDetector(const Weights& weights) : net_(detectorNet(weights))
{
    constexpr int trialSide = 3 * cellSide;
    findAt(cv::Mat(trialSide, trialSide, CV_8UC3, mean), trialSide);
}

std::vector<FoundFace> FaceDetector::findAt(const cv::Mat& rgb, int longerSide)
{
    const float scale = static_cast<float>(longerSide) / static_cast<float>(std::max(rgb.cols, rgb.rows));
    const cv::Mat scaled = resized(rgb, cv::Size(cvRound(rgb.cols * scale), cvRound(rgb.rows * scale)));
    cv::Mat whole(wholeCells(scaled.rows), wholeCells(scaled.cols), CV_8UC3, cv::Scalar::all(0));
    scaled.copyTo(whole(cv::Rect(cv::Point(), scaled.size())));
    net_.setInput(inputOf({whole}, mean, divisor));
    const cv::Mat output = net_.forward();
    if (output.dims != 4 || output.size[1] != boxesPerCell * numbersPerBox)
        throw BrokenWeights("the detector's weights are those of another network");
    return oneForEachFace(Cells(output, 1 / scale).faces());
}

std::vector<FoundFace> FaceDetector::find(const cv::Mat& rgb, int look)
{
    const auto count = static_cast<int>(sides.size());
    const int side = sides.at(static_cast<size_t>(look % count));
    if (look < count)
        return findAt(rgb, side);
    const int border = std::min(rgb.cols, rgb.rows) / 2;
    cv::Mat bordered;
    cv::copyMakeBorder(rgb, bordered, border, border, border, border, cv::BORDER_REPLICATE);
    std::vector<FoundFace> found = findAt(bordered, side);
    for (FoundFace& face : found)
        face.box -= cv::Point2f(static_cast<float>(border), static_cast<float>(border));
    return found;
}

} // namespace face

#include "Letters.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr double neighbourhood = 0.012; // of the longer side: some letters each way
constexpr double inkDepth = 0.12;       // of the light around, by which ink is darker
constexpr int leastHeight = 3, largestHeight = 70;
constexpr float darkestGround = 0.4F,
                tintTolerance = 0.055F; // of the paper's level, of the shares in the sum
constexpr int mostLetters = 20000;      // more is texture

cv::Mat inkOf(const BookLook& look)
{
    const int around = 2 * std::max(3, cvRound(neighbourhood * look.side())) + 1;
    cv::Mat mean, ink;
    cv::boxFilter(look.green(), mean, -1, {around, around});
    mean.convertTo(mean, CV_8U, 1 - inkDepth, -3);
    cv::compare(look.green(), mean, ink, cv::CMP_LT);
    return ink;
}

bool isLetterLike(const cv::Rect& box, int area)
{
    const double filled = static_cast<double>(area) / box.area();
    return box.height >= leastHeight && box.height <= largestHeight && box.width >= 2 &&
           box.width < 6 * box.height && box.height < 5 * box.width && filled > 0.15 && filled < 0.97;
}

// Colour of the paper at large: what most of the bright pixels in the middle have.
cv::Vec3f paperOf(const BookLook& look)
{
    const cv::Size size = look.green().size();
    std::array<std::vector<unsigned char>, 3> values;
    std::vector<unsigned char> greens;
    for (int y = size.height / 5; y < size.height * 4 / 5; y += 4)
        for (int x = size.width / 6; x < size.width * 5 / 6; x += 4)
            greens.push_back(look.green().at<unsigned char>(y, x));
    if (greens.empty())
        return {255, 255, 255};
    const auto bright = greens.begin() + static_cast<long>(greens.size() * 8 / 10);
    std::nth_element(greens.begin(), bright, greens.end());
    const double least = 0.85 * *bright;
    for (int y = size.height / 5; y < size.height * 4 / 5; y += 4) {
        for (int x = size.width / 6; x < size.width * 5 / 6; x += 4) {
            const cv::Vec3b& c = look.colours().at<cv::Vec3b>(y, x);
            for (int k = 0; c[1] >= least && k < 3; ++k)
                values[static_cast<size_t>(k)].push_back(c[k]);
        }
    }
    cv::Vec3f paper;
    for (int k = 0; k < 3; ++k) {
        auto& of = values[static_cast<size_t>(k)];
        const auto middle = of.begin() + static_cast<long>(of.size() / 2);
        std::nth_element(of.begin(), middle, of.end());
        paper[k] = std::max<float>(1, *middle);
    }
    return paper;
}

// Whether what lies around a mark can be paper, in a gutter's shadow too, and not desk or picture.
bool isOnPaper(const BookLook& look, const cv::Rect& box, const cv::Vec3f& paper)
{
    const float sum = paper[0] + paper[1] + paper[2];
    const cv::Rect frame({}, look.green().size());
    for (const cv::Point at : {box.tl() - cv::Point(2, 2), box.br() + cv::Point(1, 1)}) {
        if (!frame.contains(at))
            return false;
        const cv::Vec3b& c = look.colours().at<cv::Vec3b>(at);
        const float all = std::max(1.0F, static_cast<float>(c[0] + c[1] + c[2]));
        if (all < darkestGround * sum || std::abs(c[0] / all - paper[0] / sum) > tintTolerance ||
            std::abs(c[2] / all - paper[2] / sum) > tintTolerance)
            return false;
    }
    return true;
}

} // namespace

Letters findLetters(const BookLook& look)
{
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(inkOf(look), labels, stats, centres, 8, CV_32S);
    const cv::Vec3f paper = paperOf(look);
    Letters letters;
    std::vector<int> heights;
    for (int i = 1; i < count; ++i) {
        const int* row = stats.ptr<int>(i);
        const cv::Rect box(
            row[cv::CC_STAT_LEFT], row[cv::CC_STAT_TOP], row[cv::CC_STAT_WIDTH], row[cv::CC_STAT_HEIGHT]);
        if (!isLetterLike(box, row[cv::CC_STAT_AREA]) || !isOnPaper(look, box, paper))
            continue;
        letters.all.push_back({box});
        heights.push_back(box.height);
    }
    if (letters.all.empty() || letters.all.size() > mostLetters)
        return {};
    std::nth_element(heights.begin(), heights.begin() + static_cast<long>(heights.size() / 2), heights.end());
    letters.height = heights[heights.size() / 2];
    letters.all.erase(std::remove_if(letters.all.begin(),
                                     letters.all.end(),
                                     [&](const Letter& l) {
                                         return l.box.height < 0.45 * letters.height ||
                                                l.box.height > 3.5 * letters.height;
                                     }),
                      letters.all.end());
    std::sort(letters.all.begin(), letters.all.end(), [](const Letter& a, const Letter& b) {
        return a.centre() < b.centre();
    });
    return letters;
}

} // namespace mirvak

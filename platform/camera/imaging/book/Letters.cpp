#include "Letters.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {

constexpr double neighbourhood = 0.012; // of the longer side: some letters each way
constexpr double inkDepth = 0.12;       // of the light around, by which ink is darker
constexpr int leastHeight = 3, largestHeight = 70;
constexpr int mostLetters = 20000; // more is texture

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

} // namespace

Letters findLetters(const BookLook& look)
{
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(inkOf(look), labels, stats, centres, 8, CV_32S);
    Letters letters;
    std::vector<int> heights;
    for (int i = 1; i < count; ++i) {
        const int* row = stats.ptr<int>(i);
        const cv::Rect box(
            row[cv::CC_STAT_LEFT], row[cv::CC_STAT_TOP], row[cv::CC_STAT_WIDTH], row[cv::CC_STAT_HEIGHT]);
        if (!isLetterLike(box, row[cv::CC_STAT_AREA]))
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

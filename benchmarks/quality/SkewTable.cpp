#include "SkewTable.h"

#include "InkLost.h"
#include "Rivals.h"
#include "Scenes.h"
#include "SkewLeft.h"

#include "Deskew.h"

#include <algorithm>
#include <cstdio>

namespace {

using Turn = std::function<cv::Mat(const cv::Mat& photo, cv::Matx33d& toOld)>;

/// As a capture does.
cv::Mat straightened(const cv::Mat& photo, cv::Matx33d& toOld)
{
    constexpr int margin = 15; // pixels
    mirvak::Image image;
    image.pixels = photo.clone();
    mirvak::deskew(image, margin, &toOld);
    return image.pixels;
}

/// Others do not tell what they have done: it is measured.
Turn measured(const Operation& operation)
{
    if (!operation)
        return {};
    return [operation](const cv::Mat& photo, cv::Matx33d& toOld) {
        const cv::Mat page = operation(photo);
        if (page.empty())
            return photo;
        toOld = turnedAboutMiddle(photo.size(), page.size(), skewLeft(photo) - skewLeft(page));
        return page;
    };
}

} // namespace

void printSkew(int count, unsigned seed)
{
    const std::pair<const char*, Turn> rows[] = {
        {"ours", straightened},
        {"Leptonica", measured(rivals::leptonicaDeskew)},
        {"ImageMagick -deskew", measured(installed("convert", rivals::imageMagickDeskew))},
        {"unpaper", measured(installed("unpaper", rivals::unpaperDeskew))}};
    const std::vector<TurnedPage> pages = makeTurnedPages(count, {2448, 3264}, seed);
    std::printf("\n%-28s%12s%12s%12s\n", "skew left, degrees", "mean", "most", "ink cut off");
    for (const auto& [name, operation] : rows) {
        if (!operation) {
            std::printf("  %-26snot installed\n", name);
            continue;
        }
        double sum = 0, most = 0, lost = 0;
        for (const TurnedPage& page : pages) {
            cv::Matx33d toOld = cv::Matx33d::eye();
            const cv::Mat upright = operation(page.photo, toOld);
            const double left = std::abs(skewLeft(upright));
            sum += left;
            most = std::max(most, left);
            lost += inkLost(page.photo, page.ink, upright, toOld);
        }
        std::printf("  %-26s%12.3f%12.3f%12.4f\n",
                    name,
                    sum / double(pages.size()),
                    most,
                    lost / double(pages.size()));
    }
}

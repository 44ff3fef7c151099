#include "LargeInk.h"

#include <algorithm>

namespace mirvak {

namespace {

cv::Mat block(int width, int height)
{
    return cv::getStructuringElement(cv::MORPH_RECT, {std::max(1, width), std::max(1, height)});
}

// The bar's own level becomes paper.
void turnOver(cv::Mat place, const cv::Mat& bar, const cv::Mat& ink)
{
    const double level = std::min(200.0, cv::mean(place, ink)[0] + 10);
    cv::Mat turned;
    place.convertTo(turned, CV_8U, -paper / (paper - level), paper + level * paper / (paper - level));
    turned.copyTo(place, bar);
}

} // namespace

bool LargeInk::open(const Components& ink)
{
    bool changed = false;
    for (int i = 1; i < ink.count; ++i) {
        const cv::Rect box = ink.box(i);
        if (box.width <= 6 * height_ || box.height <= height_)
            continue;
        openOne(ink.mask(i), box);
        changed = true;
    }
    return changed;
}

// `mask` is the caller's copy: what is dealt with is taken out of it.
void LargeInk::openOne(const cv::Mat& mask, const cv::Rect& box)
{
    cv::Mat filled, solid;
    cv::copyMakeBorder(mask, filled, height_, height_, 2 * height_, 2 * height_, cv::BORDER_CONSTANT);
    cv::morphologyEx(filled, filled, cv::MORPH_CLOSE, block(3 * height_, 8 * height_ / 5));
    cv::morphologyEx(filled, solid, cv::MORPH_OPEN, block(6 * height_, 6 * height_ / 5));
    solid = solid(cv::Rect(2 * height_, height_, box.width, box.height)).clone();
    const Components bars(solid);
    for (int i = 1; i < bars.count; ++i) {
        const cv::Rect place = bars.box(i);
        const cv::Mat bar = bars.mask(i);
        const double dark = cv::mean(mask(place), bar)[0] / paper;
        if (place.width > 2 * place.height && dark > 0.55 && lettersIn(bar & ~mask(place)) >= 3) {
            turnOver(grey_(place + box.tl()), bar, mask(place));
            mask(place).setTo(0, bar);
        }
    }
    eraseRules(mask, box);
}

int LargeInk::lettersIn(const cv::Mat& light) const
{
    const Components parts(light);
    int letters = 0;
    for (int i = 1; i < parts.count; ++i) {
        const cv::Rect box = parts.box(i);
        letters += box.height * 2 > height_ && box.height < 5 * height_ && box.width < 6 * height_;
    }
    return letters;
}

// Long straight strokes only, no areas: what is written across a rule stays.
void LargeInk::eraseRules(const cv::Mat& mask, const cv::Rect& box)
{
    cv::Mat thick, across, upward;
    cv::morphologyEx(mask, thick, cv::MORPH_OPEN, block(2 * height_ / 3, 2 * height_ / 3));
    const cv::Mat strokes = mask & ~thick;
    cv::morphologyEx(strokes, across, cv::MORPH_OPEN, block(5 * height_, 1));
    cv::morphologyEx(strokes, upward, cv::MORPH_OPEN, block(1, 4 * height_));
    noteRules(across, box.tl());
    cv::Mat rules = across | upward;
    cv::dilate(rules, rules, block(3, 3));
    grey_(box).setTo(paper, rules);
}

void LargeInk::noteRules(const cv::Mat& across, const cv::Point& origin)
{
    const Components parts(across);
    for (int i = 1; i < parts.count; ++i) {
        if (parts.box(i).width > ruleLength * height_)
            rules_.push_back(parts.box(i) + origin);
    }
}

} // namespace mirvak

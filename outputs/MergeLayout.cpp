#include "MergeLayout.h"

#include <algorithm>

namespace {

constexpr float longestSide = 32767;

/// `other` scaled as `side` is scaled to `target`, in whole px.
float scaled(int other, float target, int side)
{
    return float(int(float(other) * target / float(side)));
}

MergeLayout checked(float width, float height, const QRect& first, const QRect& second)
{
    const bool isPossible = width >= 1 && height >= 1 && width <= longestSide && height <= longestSide;
    return isPossible ? MergeLayout{QSize(int(width), int(height)), first, second} : MergeLayout();
}

} // namespace

MergeLayout MergeLayout::leftRight(const QSize& first, const QSize& second, int gap)
{
    if (first.isEmpty() || second.isEmpty())
        return {};
    const auto height = float(second.height()); // not the mean: the first picture follows the second
    const float space = float(std::max(gap, 0));
    const float firstWidth = scaled(first.width(), height, first.height());
    const float secondWidth = scaled(second.width(), height, second.height());
    return checked(space + firstWidth + secondWidth,
                   height,
                   QRect(0, 0, int(firstWidth), int(height)),
                   QRect(int(firstWidth + space), 0, int(secondWidth), int(height)));
}

MergeLayout MergeLayout::upDown(const QSize& first, const QSize& second, int gap)
{
    if (first.isEmpty() || second.isEmpty())
        return {};
    const float width = float(first.width() + second.width()) * 0.5F;
    const float space = float(std::max(gap, 0));
    const float firstHeight = scaled(first.height(), width, first.width());
    const float secondHeight = scaled(second.height(), width, second.width());
    return checked(width,
                   space + firstHeight + secondHeight,
                   QRect(0, 0, int(width), int(firstHeight)),
                   QRect(0, int(firstHeight + space), int(width), int(secondHeight)));
}

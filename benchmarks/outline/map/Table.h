#pragma once

#include "Chance.h"
#include "Sheets.h"

#include <array>

namespace sheetmap {

using Corners =
    std::array<cv::Point2d, 4>; ///< clockwise from the sheet's first; pixel centres at whole numbers

constexpr int sceneWidth = 320, sceneHeight = 240;
const cv::Size frame(sceneWidth, sceneHeight);

/// A desk under a tilted camera, on which things are laid.
class Table
{
public:
    Table(Chance& chance, bool withPatterns);

    const Colour& desk() const { return desk_; }
    cv::Mat& picture() { return picture_; } ///< CV_32FC3, red, green, blue, 0 to 255

    /// Where the sheet would be seen.
    Corners seen(const PaperSheet& paper, const cv::Matx33d& place) const;
    /// @param place  from the sheet's pixels to the plane
    /// @param depth  of its shadow, a share of the light; negative: any
    Corners lay(const PaperSheet& paper, const cv::Matx33d& place, double depth = -1);
    /// A finger, a pen, a cable.
    void layBar(const cv::Point2d& from, const cv::Point2d& to, double wide, const Colour& colour);
    /// Small things that lie about: cups, telephones, mice, the edge of the desk.
    void clutter();

private:
    void throwShadow(const cv::Mat& mask, double depth);
    void rim(const cv::Mat& mask);
    void endDesk();

    Chance& chance_;
    cv::Matx33d tilt_;
    cv::Mat picture_;
    Colour desk_;
};

/// The sheet turned by `angle`, `length` long in the plane, its middle there.
cv::Matx33d placed(const PaperSheet& paper, const cv::Point2d& middle, double angle, double length);

} // namespace sheetmap

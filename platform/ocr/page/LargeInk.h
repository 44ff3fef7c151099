#pragma once

#include "Components.h"

#include <vector>

namespace mirvak {

/// Large areas of ink: bars with light print are turned over, rules and frames are taken out of what they
/// enclose.
class LargeInk
{
public:
    /// @param grey CV_8UC1, borrowed, changed in place @param height px, of the usual mark
    LargeInk(cv::Mat& grey, int height) : grey_(grey), height_(height) {}

    /// Long lines across that were found on the way; px.
    const std::vector<cv::Rect>& rules() const { return rules_; }

    /// @return true when the page has changed.
    bool open(const Components& ink);

private:
    void openOne(const cv::Mat& mask, const cv::Rect& box);
    int lettersIn(const cv::Mat& light) const;
    void eraseRules(const cv::Mat& mask, const cv::Rect& box);
    void noteRules(const cv::Mat& across, const cv::Point& origin);

    cv::Mat& grey_;
    int height_;
    std::vector<cv::Rect> rules_;
};

} // namespace mirvak

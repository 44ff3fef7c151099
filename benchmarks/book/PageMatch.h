#pragma once

#include <opencv2/core.hpp>

#include <vector>

/// Where the points of a true page are in a picture made of it.
///
/// Neither lines nor edges are looked for: small patches of the true page are found again in the picture by
/// normalised cross correlation, from coarse to fine (at an eighth, a quarter, a half and all of the
/// resolution), each level started by a smooth surface through the level before. So the measure owes nothing
/// to the way in which the picture was made. Without light: both are divided by their own paper.
class PageMatch
{
public:
    static constexpr int width = 1000; ///< px: both pictures are looked at in this width

    /// @param truth, picture  RGB
    PageMatch(const cv::Mat& truth, const cv::Mat& picture);

    /// Whether the page was found at all.
    bool isFound() const { return found_; }
    /// px of the true page in `width`
    cv::Size truthSize() const { return truth_.size(); }
    struct Point
    {
        cv::Point2d truth;   ///< asked for
        cv::Point2d picture; ///< found
    };
    /// The places where the patches around `points` are, to about a quarter of a pixel; what is not sure is
    /// left out.
    std::vector<Point> find(const std::vector<cv::Point2d>& points) const;
    /// Where a point would be when the page were only moved, scaled and sheared.
    cv::Point2d stiff(cv::Point2d truth) const { return flat_.at(truth); }
    /// The true page's frame filled from the picture, moved, scaled and sheared alone; RGB.
    cv::Mat aligned(const cv::Mat& picture) const;

private:
    /// Polynomials of the place on the page, in parts of its width.
    struct Surface
    {
        int across = 1, down = 1; ///< degrees
        std::vector<double> x, y; ///< coefficients
        cv::Point2d at(cv::Point2d truth) const;
    };
    static Surface fit(std::vector<Point> points, int across, int down);
    /// The two pictures at one resolution, the second one in the first one's frame.
    struct Level
    {
        double scale = 1;
        cv::Mat truth, moved;
    };
    Level levelAt(double scale) const;
    std::vector<Point>
    lookAt(const std::vector<cv::Point2d>& points, const Level& level, int patch, int search) const;
    bool refine(double scale, int cells, int patch, int search, int across, int down);

    cv::Mat truth_, picture_; ///< CV_32F
    Surface surface_, flat_;
    Level finest_;
    bool found_ = false;
};

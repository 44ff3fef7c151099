#pragma once

#include "EdgeField.h"

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// A straight edge across the whole small picture, with the places where there is an edge to see.
/// Points of the line are foot() + t * along(), t in pixels from tBegin().
class EdgeLine
{
public:
    EdgeLine(const cv::Point2d& normal, double offset, const cv::Size& picture);

    const cv::Point2d& normal() const { return normal_; }
    double offset() const { return offset_; }
    cv::Point2d along() const { return {-normal_.y, normal_.x}; }
    cv::Point2d at(double t) const { return normal_ * offset_ + along() * t; }
    double positionOf(const cv::Point2d& point) const { return point.dot(along()); }
    /// Where the line enters and leaves the picture; empty range when it does not cross it.
    double tBegin() const { return begin_; }
    double tEnd() const { return end_; }

    /// Share (0 to 1) of the stretch, as far as it lies in the picture, that follows an edge.
    double coverage(double from, double to) const;
    /// Sum of +1 where the colour rises along the normal and -1 where it falls, as a share of the stretch.
    double polarity(double from, double to) const;
    /// Pixels that lie in well covered stretches: long for the edge of a thing, near 0 along a line of text.
    double denseLength() const { return denseLength_; }
    /// Marks an edge of the picture itself: a page may run out of it there.
    bool isBorder() const { return border_; }
    static EdgeLine border(const cv::Point2d& normal, double offset, const cv::Size& picture);

    /// Looks for edge points within `reach` pixels at both sides and fits the line to them (total least
    /// squares). @return false when there are too few.
    bool fit(const EdgeField& field, int reach, std::vector<cv::Point2f>& work);
    /// Notes where the line follows an edge.
    void trace(const EdgeField& field, int reach);

private:
    void findEnds(const cv::Size& picture);
    const EdgePoint* nearest(const EdgeField& field, double t, int reach) const;
    void markDense();
    double share(const std::vector<short>& sums, double from, double to) const;

    cv::Point2d normal_;
    double offset_;
    cv::Size picture_;
    double begin_ = 0, end_ = 0;
    std::vector<short> covered_, rising_; ///< running sums from tBegin(), a pixel a step
    std::vector<unsigned char> dense_;
    double denseLength_ = 0;
    bool border_ = false;
};

/// Finds the straight edges of a small picture: a Hough transform in which each edge point votes only for
/// lines along its own direction (O'Gorman and Clowes 1976), then a fit to the points themselves.
class LineFinder
{
public:
    /// The straightest and longest edges, best first, at most `most`.
    const std::vector<EdgeLine>& find(const EdgeField& field, size_t most);

private:
    struct Peak
    {
        int votes, angle, offset;
    };
    void vote(const EdgeField& field);
    void findPeaks();
    void addLine(const Peak& peak, const EdgeField& field);

    cv::Mat votes_, smooth_;
    std::vector<Peak> peaks_;
    std::vector<EdgeLine> lines_;
    std::vector<cv::Point2f> work_;
    int offsets_ = 0;
};

} // namespace mirvak

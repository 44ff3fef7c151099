#pragma once

#include "EdgeField.h"
#include "RegionField.h"

#include <opencv2/core.hpp>

#include <array>
#include <cmath>
#include <vector>

namespace mirvak {

/// How well a stretch of a line follows an edge, and how much its two sides differ. All 0 to 1 except as
/// noted.
struct Stretch
{
    double covered = 0; ///< share that follows an edge
    double clear = 0;   ///< share where the colours of the two sides differ clearly
    double steady = 0;  ///< 1 when they differ in the same way all along
    double rise = 0;    ///< mean change of brightness along the normal, levels
};

/// A straight edge across the whole small picture, with the places where there is an edge to see. Points of
/// the line are at(t), t in pixels.
class EdgeLine
{
public:
    using Planes = std::array<cv::Mat, 3>;

    EdgeLine(const cv::Point2d& normal, double offset, const cv::Size& picture);
    /// A side of the picture itself: a page may run out of the picture there.
    static EdgeLine border(const cv::Point2d& normal, double offset, const cv::Size& picture);
    bool isBorder() const { return border_; }

    const cv::Point2d& normal() const { return normal_; }
    double offset() const { return offset_; }
    cv::Point2d along() const { return {-normal_.y, normal_.x}; }
    cv::Point2d at(double t) const { return normal_ * offset_ + along() * t; }
    double positionOf(const cv::Point2d& point) const { return point.dot(along()); }
    /// Where the line enters and leaves the picture; an empty range when it does not cross it.
    double tBegin() const { return begin_; }
    double tEnd() const { return end_; }

    /// Looks for edge points within `reach` pixels at both sides and fits the line to those in well covered
    /// stretches (total least squares). @return false when there are too few.
    bool fit(const EdgeField& field, int reach, std::vector<cv::Point2f>& work);
    /// Measures length and rank from samples of the well covered stretches that fit() found.
    void rate(const EdgeField& field, const Planes& planes, const RegionField& regions);
    /// Notes where the line follows an edge and how its sides differ, for between() and coveredBetween().
    void trace(const EdgeField& field, const Planes& planes, int reach);
    /// Takes the edge points under the line for itself. `claimed`: CV_8UC1 of the picture's size,
    /// the owner's number where a line did so before, else 0.
    /// @return share of the points that are its own
    double claim(cv::Mat& claimed, unsigned char owner) const;

    /// Pixels where an edge is followed without larger gaps and the sides differ: long for the edge of a
    /// thing, short along a line of text, which has gaps, and a ruling, which has paper on both sides.
    double length() const { return length_; }
    /// The longest such stretch, whether the sides differ or not, pixels: the edge of paper is faint on
    /// paper, but has no gaps.
    double longestRun() const { return longestRun_; }
    /// Orders lines: by length, strength, and how steadily the sides differ.
    double rank() const { return rank_; }
    /// Whether it is well covered there. After fit().
    bool isDenseAt(double t) const;
    /// Of the part between two positions that lies in the picture, as a share of the whole part.
    Stretch between(double from, double to) const;
    double coveredBetween(double from, double to) const;
    /// Pixels before `t` that follow an edge.
    double coveredBefore(double t) const;

private:
    static constexpr int sideDepth = 2; ///< pixels on each side that are averaged
    using Beside = std::array<cv::Point, sideDepth>;
    struct Tally ///< running sums from tBegin() on
    {
        int clear, size;
        std::array<int, 3> rise;
    };
    void findEnds(const cv::Size& picture);
    cv::Point edgeAt(size_t step) const;
    void markDense();
    void markCovered(const EdgeField& field, int reach);
    static void add(Tally& tally, const std::array<int, 3>& rise, int clearStep);
    static Stretch stretchOf(const Tally& sum, double length);
    bool isSideways() const { return std::abs(normal_.x) > std::abs(normal_.y); }
    static int clearStepOf(const EdgeField& field);
    Beside beside() const;
    std::array<int, 3> riseAt(const Planes& planes, double t, const Beside& beside) const;
    size_t stepAt(double t) const;

    cv::Point2d normal_;
    double offset_;
    cv::Size picture_;
    double begin_ = 0, end_ = 0, length_ = 0, rank_ = 0, straightness_ = 1, longestRun_ = 0;
    std::vector<short> edge_;          ///< where across the line the edge lies at each step, pixels; or none
    std::vector<unsigned char> dense_; ///< 1 in well covered stretches
    std::vector<short> covered_;       ///< steps with an edge before each
    std::vector<Tally> tallies_;
    bool border_ = false;
};

} // namespace mirvak

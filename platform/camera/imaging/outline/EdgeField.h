#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// One point of a thin edge.
struct EdgePoint
{
    short x, y;
    unsigned char direction; ///< of the gradient over half a turn, 0 to edgeDirections - 1, two degrees each
    unsigned char weight;    ///< strength in thresholds, 1 to 6
};

constexpr int edgeDirections = 90;

/// The edges of a small colour picture. The gradient at a pixel is that of the colour which changes most, so
/// a white page on a yellow desk shows in blue where its brightness would not. Keeps its buffers; one thread
/// at a time.
class EdgeField
{
public:
    /// `planes`: three CV_8UC1 of one size. `quiet`: CV_8UC1, one for each `cell` x `cell` pixels, not 0
    /// where edges do not matter and are left out; or empty.
    void build(const std::array<cv::Mat, 3>& planes, const cv::Mat& quiet = {}, int cell = 1);

    /// Takes away what lies in a part of the picture, so that the next search finds something else.
    /// `part`: convex, pixels; changeAcross() stays as it is.
    void erase(const std::vector<cv::Point>& part);

    const std::vector<EdgePoint>& points() const { return points_; }
    /// EdgePoint::direction + 1 at a pixel, 0 where there is no edge. What lies before and behind it in
    /// memory are its neighbours in its row, with `acrossRows` those in its column: of a line's width all is
    /// read at once. A frame of `padding` zeros lies around the picture, so that a search need not look out
    /// for its border.
    const unsigned char* directionAt(int x, int y, bool acrossRows) const
    {
        return acrossRows ? turned_.ptr(x + padding) + y + padding
                          : directions_.ptr(y + padding) + x + padding;
    }
    static constexpr int padding = 8;
    /// How much the colour changes at each pixel: CV_16SC1, four to eight to a level.
    const cv::Mat& change() const { return magnitude_; }
    /// The least change that counts as an edge, levels: above the noise and texture of this picture. Where a
    /// part of it is quieter than the whole, as paper is on a cloth, less counts there.
    double threshold() const;
    cv::Size size() const { return magnitude_.size(); }
    /// How much the colour changes across a line with that unit normal at the pixel, levels; 0 outside.
    float changeAcross(const cv::Point2d& point, const cv::Point2d& normal) const;
    /// The mean of that at so many places of a line from one point to another, both in the picture; more than
    /// `most` levels count as `most`.
    float changeAlong(const cv::Point2f& from, const cv::Point2f& to, int places, float most) const;

private:
    void chooseThreshold();
    void chooseTileThresholds();
    void findPoints(const cv::Mat& quiet, int cell);
    void findRuns(const cv::Mat& quiet, int row, int cell);
    void thinRun(int y, int from, int to);
    void thin(int y, int from, int to, short threshold);
    void addRidge(int y);

    /// The points of a row that will be those of an edge: four of them become such at once.
    struct Ridge
    {
        std::vector<short> x, dx, dy;
        std::vector<unsigned char> weight;
        size_t count = 0;
        void reserve(int most);
        void add(int atX, short changeX, short changeY, int strength);
    };
    cv::Mat gx_, gy_, magnitude_; // CV_16S, |gx| + |gy|
    std::vector<short> gradientWork_;
    std::vector<EdgePoint> points_;
    std::vector<cv::Range> runs_; ///< pixels of a row that are not quiet
    Ridge ridge_;
    cv::Mat directions_, turned_, erased_; ///< with the frame around them; rows and columns changed places
    int threshold_ = 0;
    std::vector<short> tileThresholds_; ///< row by row
    int tilesAcross_ = 0;
};

} // namespace mirvak

#pragma once

#include "PageLook.h"
#include "Sway.h"

#include <vector>

namespace mirvak {

/// Tells which blocks of one look show something else than in another look. A page that was nudged, a desk
/// that shakes and a lens that breathes make no difference; light makes none by the nature of the slopes.
/// Keeps its buffers. One thread at a time.
class LookMatch
{
public:
    enum class Block : unsigned char {
        blank, ///< nothing to see in either look
        same,
        seam, ///< between two things that moved differently: the edge of a nudged page, uncovered desk
        changed
    };

    /// Looks of one size. `noise` is the energy that the sensor's noise gives the slopes. With `follow`
    /// things may have moved by up to 40 pixels of the finest level and turned a little, else by 2.
    void compare(const PageLook& now, const PageLook& then, double noise, bool follow);

    const std::vector<Block>& blocks() const { return blocks_; }
    /// Share of the picture that shows something else.
    double changedShare() const { return changedShare_; }
    /// Energy of all slopes now against then: a picture out of focus has less.
    double energyRatio() const { return energyRatio_; }
    /// The same, only of the blocks that show the same; 1 when there are hardly any.
    double sharpness() const { return sharpness_; }
    /// Half the energy of the difference in the quietest tenth of the blocks: the noise, for even when all
    /// sways some blocks have nothing in them that could.
    double noise() const { return noise_; }

private:
    void takeFloors(const PageLook& now, double noise);
    void lookAtRest(const PageLook& now, const PageLook& then);
    void breathe(const PageLook& now, const PageLook& then);
    bool follow(const PageLook& now, const PageLook& then);
    int search(const PageLook& now, const PageLook& then, const Sway& sway, size_t oneIn);
    bool searchBlock(const PageLook& now, const PageLook& then, int block, cv::Point around, size_t steps);
    void spread(const PageLook& now, const PageLook& then);
    void takeShiftsAround(int block, cv::Size grid);
    void findSeams(cv::Size grid);
    void sumUp(const PageLook& now);

    std::vector<Block> blocks_;
    std::vector<cv::Point> shifts_;  ///< of the blocks that are the same
    std::vector<double> brightness_; ///< of each block, 0 to 1
    std::vector<double> floors_;     ///< energy below which a block shows nothing
    std::vector<SwayStep> steps_;
    std::vector<cv::Point> shiftsAround_;
    std::vector<unsigned char> moved_;
    std::vector<int> changed_;
    std::vector<double> noises_, ratios_;
    double changedShare_ = 0, energyRatio_ = 1, sharpness_ = 1, noise_ = 0;
};

} // namespace mirvak

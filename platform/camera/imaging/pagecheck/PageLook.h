#pragma once

#include "Reduction.h"

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// What the page check keeps of a picture: the slopes of its logarithmic brightness, which light and exposure
/// do not change, and the colours of its blocks. Keeps its buffers. One thread at a time.
class PageLook
{
public:
    static constexpr int blockSide = 32; ///< pixels of the finest level: 15 to 20 mm on the paper

    /// Energy of slopes, a pixel, below which there is nothing to see: 4 % of contrast between the two
    /// neighbours of a pixel.
    static constexpr float plainEnergy = 120;

    /// Slopes at one size of the picture. CV_16SC1, both of one size.
    struct Level
    {
        cv::Mat across; ///< left to right
        cv::Mat down;   ///< top to bottom
        int scale = 1;  ///< pixels of the finest level per pixel, both ways
    };
    using Colour = cv::Vec3f; ///< red, green, blue, 0 to 255

    void build(const Reduction& reduction);
    void clear();
    /// Takes the other look over, into its own buffers.
    void copyFrom(const PageLook& other);

    /// From fine to coarse: all that is reduced, a quarter and an eighth of it.
    const std::array<Level, 3>& levels() const { return levels_; }
    cv::Size size() const { return levels_[0].across.size(); }
    /// Blocks of the finest level, row by row; the last ones may be smaller, but not by more than half.
    cv::Size grid() const { return grid_; }
    cv::Rect block(int index) const;
    const std::vector<Colour>& colours() const { return colours_; } ///< mean of each block
    /// Energy of each block's slopes, a pixel: what there is to see.
    const std::vector<float>& energies() const { return energies_; }

private:
    void takeColours(const Reduction& reduction);
    void takeEnergies();

    std::array<Level, 3> levels_{};
    cv::Mat tone_, quarter_, eighth_; ///< CV_16SC1, logarithm of brightness
    std::vector<short> row_;
    std::vector<Colour> colours_;
    std::vector<float> energies_;
    cv::Size grid_;
};

} // namespace mirvak

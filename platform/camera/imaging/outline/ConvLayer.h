#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace mirvak {

/// What a layer of a network sees: so many numbers at each place, side by side, with a frame of zeros around
/// all, so that taps need not look out for the border. Keeps its buffer when its size stays.
class FeaturePlane
{
public:
    static constexpr int frame = 2, together = 4;

    /// All 0. `channels`: numbers at each place, kept as the next multiple of `together`.
    void create(int width, int height, int channels);

    int width() const { return width_; }
    int height() const { return height_; }
    int channels() const { return channels_; }
    /// From one place to its right neighbour, and to the one below.
    ptrdiff_t step() const { return step_; }
    ptrdiff_t rowStep() const { return step_ * (width_ + 2 * frame); }
    float* at(int x, int y) { return values_.data() + (y + frame) * rowStep() + (x + frame) * step_; }
    const float* at(int x, int y) const
    {
        return values_.data() + (y + frame) * rowStep() + (x + frame) * step_;
    }

    /// Adds the numbers of a plane of half the size, each to four places. Both have the same channels.
    void addEnlarged(const FeaturePlane& half);

private:
    int width_ = 0, height_ = 0, channels_ = 0;
    ptrdiff_t step_ = 0;
    std::vector<float> values_;
};

/// A convolution with 3 x 3 taps; what lies outside is 0. Constant once made, so reentrant.
class ConvLayer
{
public:
    struct Shape
    {
        int inputs, outputs; ///< channels; outputs at most 32
        int step;            ///< places of the input to one of the output: 1 or 2, rounded up
        int reach;           ///< places between taps: 1 or 2
        bool isRectified;    ///< what is below 0 becomes 0
    };
    /// `taps`: (output, input, row, column), each to be multiplied by the factor of its output; `offsets` are
    /// added to the sums. All are copied.
    ConvLayer(const Shape& shape, const int8_t* taps, const float* factors, const float* offsets);

    /// `in` has the inputs as channels. `out` is made.
    void apply(const FeaturePlane& in, FeaturePlane& out) const;

private:
    template <int fours> void applyTo(const FeaturePlane& in, FeaturePlane& out) const;

    Shape shape_;
    int padded_;                           ///< outputs as the next multiple of four
    std::vector<float> weights_, offsets_; ///< (row, column, input, output)
};

/// A layer of learnt weights, as ConvLayer takes them.
template <size_t weights, size_t outputs>
ConvLayer layerOf(const std::array<int8_t, weights>& taps,
                  const std::array<float, outputs>& factors,
                  const std::array<float, outputs>& offsets,
                  int step = 1,
                  int reach = 1,
                  bool isRectified = true)
{
    const ConvLayer::Shape shape{
        static_cast<int>(weights / outputs / 9), static_cast<int>(outputs), step, reach, isRectified};
    return {shape, taps.data(), factors.data(), offsets.data()};
}

} // namespace mirvak

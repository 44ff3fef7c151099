#include "ConvLayer.h"

#include <algorithm>

// Of two versions the one for the processor at hand is chosen when the program starts. The sanitizers' own
// code cannot run that early.
#if defined __x86_64__ && !defined __SANITIZE_ADDRESS__ && !defined __SANITIZE_THREAD__
#define WITH_AND_WITHOUT_FMA [[gnu::target_clones("fma", "default")]]
#else
#define WITH_AND_WITHOUT_FMA
#endif

namespace mirvak {

namespace {

constexpr int taps = 3;
/// Four numbers that the processor multiplies at once.
using Four [[gnu::vector_size(16), gnu::aligned(4), gnu::may_alias]] = float;

int roundedUp(int channels)
{
    return (channels + FeaturePlane::together - 1) / FeaturePlane::together * FeaturePlane::together;
}

/// Where the sums of one layer begin, and how to go on.
struct Walk
{
    const float *in, *weights, *offsets;
    ptrdiff_t rowStep, tapStep, pixelStep;
    int inputs;
};

/// The sums of `pixels` places side by side at once: all stay in registers, and each weight is read once.
template <int fours, int pixels>
[[gnu::always_inline]] inline void sumUp(const Walk& walk, bool isRectified, float* out)
{
    Four sums[pixels][fours];
    for (int p = 0; p < pixels; ++p)
        for (int f = 0; f < fours; ++f)
            sums[p][f] = *reinterpret_cast<const Four*>(walk.offsets + 4 * f);
    const float* weights = walk.weights;
    for (int row = 0; row < taps; ++row) {
        for (int column = 0; column < taps; ++column) {
            const float* tap = walk.in + row * walk.rowStep + column * walk.tapStep;
            for (int c = 0; c < walk.inputs; ++c, weights += 4 * fours) {
                for (int p = 0; p < pixels; ++p) {
                    const float value = tap[p * walk.pixelStep + c];
                    const Four values{value, value, value, value};
                    for (int f = 0; f < fours; ++f)
                        sums[p][f] += values * *reinterpret_cast<const Four*>(weights + 4 * f);
                }
            }
        }
    }
    for (int p = 0; p < pixels; ++p) {
        for (int f = 0; f < fours; ++f) {
            const Four zero{};
            const Four sum = sums[p][f];
            *reinterpret_cast<Four*>(out + 4 * (p * fours + f)) =
                isRectified ? (sum > zero ? sum : zero) : sum;
        }
    }
}

} // namespace

void FeaturePlane::create(int width, int height, int channels)
{
    width_ = width;
    height_ = height;
    channels_ = channels;
    step_ = roundedUp(channels);
    values_.assign(static_cast<size_t>(rowStep() * (height + 2 * frame)), 0);
}

void FeaturePlane::addEnlarged(const FeaturePlane& half)
{
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            float* here = at(x, y);
            const float* there = half.at(x / 2, y / 2);
            for (ptrdiff_t c = 0; c < step_; ++c)
                here[c] += there[c];
        }
    }
}

ConvLayer::ConvLayer(const Shape& shape, const int8_t* wholeTaps, const float* factors, const float* offsets)
    : shape_(shape), padded_(roundedUp(shape.outputs)),
      weights_(static_cast<size_t>(taps * taps * shape.inputs * padded_)),
      offsets_(static_cast<size_t>(padded_))
{
    for (int o = 0; o < shape.outputs; ++o) {
        offsets_[static_cast<size_t>(o)] = offsets[o];
        for (int i = 0; i < shape.inputs; ++i) {
            for (int t = 0; t < taps * taps; ++t)
                weights_[static_cast<size_t>((t * shape.inputs + i) * padded_ + o)] =
                    factors[o] * static_cast<float>(wholeTaps[(o * shape.inputs + i) * taps * taps + t]);
        }
    }
}

template <int fours>
[[gnu::always_inline]] inline void ConvLayer::applyTo(const FeaturePlane& in, FeaturePlane& out) const
{
    constexpr int pixels = fours == 1 ? 8 : fours == 2 ? 4 : 2; // as many sums as there are registers
    Walk walk{nullptr,
              weights_.data(),
              offsets_.data(),
              shape_.reach * in.rowStep(),
              shape_.reach * in.step(),
              shape_.step * in.step(),
              shape_.inputs};
    for (int y = 0; y < out.height(); ++y) {
        int x = 0;
        const auto begin = [&] {
            return in.at(x * shape_.step - shape_.reach, y * shape_.step - shape_.reach);
        };
        for (; x + pixels <= out.width(); x += pixels) {
            walk.in = begin();
            sumUp<fours, pixels>(walk, shape_.isRectified, out.at(x, y));
        }
        for (; x < out.width(); ++x) {
            walk.in = begin();
            sumUp<fours, 1>(walk, shape_.isRectified, out.at(x, y));
        }
    }
}

WITH_AND_WITHOUT_FMA void ConvLayer::apply(const FeaturePlane& in, FeaturePlane& out) const
{
    const auto reduced = [this](int length) { return (length + shape_.step - 1) / shape_.step; };
    out.create(reduced(in.width()), reduced(in.height()), shape_.outputs);
    switch (padded_ / 4) {
    case 1:
        return applyTo<1>(in, out);
    case 2:
        return applyTo<2>(in, out);
    case 3:
        return applyTo<3>(in, out);
    case 4:
        return applyTo<4>(in, out);
    case 5:
        return applyTo<5>(in, out);
    case 6:
        return applyTo<6>(in, out);
    case 7:
        return applyTo<7>(in, out);
    default:
        return applyTo<8>(in, out);
    }
}

} // namespace mirvak

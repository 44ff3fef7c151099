#pragma once

#include "ConvLayer.h"

#include <array>

namespace mirvak {

/// The small network that knows what sheets look like: an encoder and decoder with sums across (after
/// Ronneberger, Fischer and Brox 2015), 53 thousand weights, learnt from made scenes (`learn_map.py`). Keeps
/// its buffers; one thread at a time.
class SheetNet
{
public:
    SheetNet();

    static constexpr int inputs = 3, outputs = 2;
    /// To be filled with red, green and blue, mean 0 and spread 1, of a picture of that size in pixels.
    FeaturePlane& look(int width, int height);
    /// Of what was filled in: at each second pixel both ways the logits of being on the sheet and of being at
    /// its border.
    const FeaturePlane& run();

private:
    enum Layer {
        lookLayer,
        fine,
        fineAgain,
        middle,
        middleAgain,
        coarse,
        coarseWide,
        coarseAgain,
        up,
        middleUp,
        fineUp,
        lookUp,
        mapLayer,
        layerCount
    };
    FeaturePlane& step(Layer layer, const FeaturePlane& in);

    std::array<FeaturePlane, layerCount> planes_;
    FeaturePlane look_;
};

} // namespace mirvak

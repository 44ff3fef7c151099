#include "SheetNet.h"

#include "SheetNetWeights.h"

#include <vector>

namespace mirvak {

namespace {

template <size_t weights, size_t outputs>
ConvLayer layer(const std::array<int8_t, weights>& taps,
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

/// In the order of SheetNet::Layer.
std::vector<ConvLayer> makeLayers()
{
    namespace w = sheetweights;
    std::vector<ConvLayer> layers;
    layers.push_back(layer(w::look, w::lookFactors, w::lookOffsets, 2));
    layers.push_back(layer(w::fine, w::fineFactors, w::fineOffsets, 2));
    layers.push_back(layer(w::fineAgain, w::fineAgainFactors, w::fineAgainOffsets));
    layers.push_back(layer(w::middle, w::middleFactors, w::middleOffsets, 2));
    layers.push_back(layer(w::middleAgain, w::middleAgainFactors, w::middleAgainOffsets));
    layers.push_back(layer(w::coarse, w::coarseFactors, w::coarseOffsets, 2));
    layers.push_back(layer(w::coarseWide, w::coarseWideFactors, w::coarseWideOffsets, 1, 2));
    layers.push_back(layer(w::coarseAgain, w::coarseAgainFactors, w::coarseAgainOffsets));
    layers.push_back(layer(w::up, w::upFactors, w::upOffsets));
    layers.push_back(layer(w::middleUp, w::middleUpFactors, w::middleUpOffsets));
    layers.push_back(layer(w::fineUp, w::fineUpFactors, w::fineUpOffsets));
    layers.push_back(layer(w::lookUp, w::lookUpFactors, w::lookUpOffsets));
    layers.push_back(layer(w::map, w::mapFactors, w::mapOffsets, 1, 1, false));
    return layers;
}

const std::vector<ConvLayer>& layers()
{
    static const std::vector<ConvLayer> made = makeLayers();
    return made;
}

} // namespace

SheetNet::SheetNet()
{
    layers();
}

FeaturePlane& SheetNet::look(int width, int height)
{
    look_.create(width, height, inputs);
    return look_;
}

FeaturePlane& SheetNet::step(Layer layer, const FeaturePlane& in)
{
    layers()[layer].apply(in, planes_[layer]);
    return planes_[layer];
}

const FeaturePlane& SheetNet::run()
{
    FeaturePlane& looked = step(lookLayer, look_);
    FeaturePlane& finer = step(fineAgain, step(fine, looked));
    FeaturePlane& between = step(middleAgain, step(middle, finer));
    between.addEnlarged(step(up, step(coarseAgain, step(coarseWide, step(coarse, between)))));
    finer.addEnlarged(step(middleUp, between));
    looked.addEnlarged(step(fineUp, finer));
    return step(mapLayer, step(lookUp, looked));
}

} // namespace mirvak

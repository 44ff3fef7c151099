#include "SheetNet.h"

#include "SheetNetWeights.h"

#include <vector>

namespace mirvak {

namespace {

/// In the order of SheetNet::Layer.
std::vector<ConvLayer> makeLayers()
{
    namespace w = sheetweights;
    std::vector<ConvLayer> layers;
    layers.push_back(layerOf(w::look, w::lookFactors, w::lookOffsets, 2));
    layers.push_back(layerOf(w::fine, w::fineFactors, w::fineOffsets, 2));
    layers.push_back(layerOf(w::fineAgain, w::fineAgainFactors, w::fineAgainOffsets));
    layers.push_back(layerOf(w::middle, w::middleFactors, w::middleOffsets, 2));
    layers.push_back(layerOf(w::middleAgain, w::middleAgainFactors, w::middleAgainOffsets));
    layers.push_back(layerOf(w::coarse, w::coarseFactors, w::coarseOffsets, 2));
    layers.push_back(layerOf(w::coarseWide, w::coarseWideFactors, w::coarseWideOffsets, 1, 2));
    layers.push_back(layerOf(w::coarseAgain, w::coarseAgainFactors, w::coarseAgainOffsets));
    layers.push_back(layerOf(w::up, w::upFactors, w::upOffsets));
    layers.push_back(layerOf(w::middleUp, w::middleUpFactors, w::middleUpOffsets));
    layers.push_back(layerOf(w::fineUp, w::fineUpFactors, w::fineUpOffsets));
    layers.push_back(layerOf(w::lookUp, w::lookUpFactors, w::lookUpOffsets));
    layers.push_back(layerOf(w::map, w::mapFactors, w::mapOffsets, 1, 1, false));
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

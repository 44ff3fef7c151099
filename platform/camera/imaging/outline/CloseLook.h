#pragma once

#include "ConvLayer.h"
#include "EdgeField.h"
#include "Outline.h"
#include "SmallLook.h"

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// A closer look at the few outlines between which the choice lies: a small network sees what each of them
/// holds, pulled straight, with a rim of what is around it, and tells whether a sheet ends just there. Of
/// 21 thousand weights, learnt from made scenes (`learn_look.py`). Keeps its buffers; one thread at a time.
class CloseLook
{
public:
    using Corners = std::array<cv::Point2d, 4>;

    CloseLook();

    /// Weighs `outlines` once more, of which the certainties and that of there being no sheet make 1, where
    /// the first is not certain already. They are then again in the order of their certainty.
    void weigh(std::vector<Outline>& outlines, const SmallLook::Planes& planes, const EdgeField& edges);

    /// What the network sees: CV_8UC4, `side` x `side`; red, green, blue, and how much the colour changes in
    /// shares of what counts as an edge. The outline's corners lie `rim` from those of the patch.
    const cv::Mat& patchOf(const Corners& corners, const SmallLook::Planes& planes, const EdgeField& edges);
    static constexpr int side = 48, rim = 8;

private:
    /// The mean of four looks, at the patch and its mirror images: what is no property of the sheet averages
    /// out (test-time augmentation: Krizhevsky, Sutskever and Hinton 2012).
    double scoreOf(const cv::Mat& patch);
    void show(const cv::Mat& patch, double mean, double scale, bool isMirrored, bool isUpsideDown);
    double scoreOfShown();

    enum Layer { fine, middle, coarse, coarser, whole, scoreLayer, layerCount };
    cv::Mat patch_;
    FeaturePlane look_;
    std::array<FeaturePlane, layerCount> planes_;
};

} // namespace mirvak

#pragma once

#include "Desk.h"
#include "Layer.h"
#include "Light.h"
#include "Stage.h"
#include "View.h"

#include <opencv2/core.hpp>

namespace deskpictures {

/// Everything about a picture but what is printed on the page.
struct Scene
{
    Material desk = Material::Oak;
    Pose pose;
    Light light;
    double thicknessMm = 0.5; ///< how far the page's edges stand above the desk
    uint64_t seed = 1;        ///< of noise and unevenness
};

/// A layer on a desk, photographed. @return 8-bit RGB
cv::Mat photograph(const Scene& scene, const View& view, const Layer& layer);

/// The desk of a scene under its light, with nothing on it.
Stage emptyDesk(const Scene& scene, const View& view);

/// Lens blur in pixels for a picture of this size: small pictures are scaled down inside the camera and a bit
/// crisper.
double lensBlurPx(cv::Size picturePx);

} // namespace deskpictures

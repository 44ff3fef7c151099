#include "Photograph.h"

#include "Sensor.h"

namespace deskpictures {

double lensBlurPx(cv::Size picturePx)
{
    return picturePx.width > 2000 ? 0.75 : 0.6;
}

Stage emptyDesk(const Scene& scene, const View& view)
{
    return {seeDesk(deskTop(scene.desk), view),
            lightMap(scene.light, view.picturePx(), scene.seed),
            scene.light.fromDegrees};
}

cv::Mat photograph(const Scene& scene, const View& view, const Layer& layer)
{
    Stage stage = emptyDesk(scene, view);
    stage.lay(layer.colours, sheetShadows(scene.thicknessMm, view.pxPerMm()));
    if (!layer.light.empty())
        stage.shade(layer.light);
    const cv::Mat energy = Sensor::expose(stage.colours(),
                                          stage.light(),
                                          scene.light.cast * scene.light.exposure,
                                          lensBlurPx(view.picturePx()));
    return Sensor(scene.seed).develop(energy);
}

} // namespace deskpictures

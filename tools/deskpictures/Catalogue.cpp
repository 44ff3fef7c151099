#include "Catalogue.h"

namespace deskpictures {
namespace {

// Warm lamps, cool windows: what is left of them after the camera's white balance.
const cv::Vec3d warm(1.03, 1.0, 0.93);
const cv::Vec3d faintWarm(1.015, 1.0, 0.965);
const cv::Vec3d cool(0.965, 1.0, 1.035);
const cv::Vec3d greenish(0.98, 1.01, 0.97);

Light lamp(double fromDegrees, double falloff, const cv::Vec3d& cast, double exposure = 0.92)
{
    Light light;
    light.fromDegrees = fromDegrees;
    light.falloff = falloff;
    light.cast = cast;
    light.exposure = exposure;
    return light;
}

Light shadowed(Light light, cv::Point2d at, cv::Size2d size, double depth)
{
    light.shadowAt = at;
    light.shadowSize = size;
    light.shadowDepth = depth;
    return light;
}

FlatPage drawCodesOnly()
{
    std::vector<CodeTruth> codes;
    return drawCodes(codes);
}

Pose pose(double turn, double tilt, double from, double fill = 0.975, cv::Point2d shift = {0, 0})
{
    Pose result;
    result.turnDegrees = turn;
    result.tiltDegrees = tilt;
    result.fromDegrees = from;
    result.fill = fill;
    result.shift = shift;
    return result;
}

} // namespace

const std::vector<Exhibit>& catalogue()
{
    static const std::vector<Exhibit> exhibits = {
        {"letter", {Material::Oak, pose(-1.1, 4, 80), lamp(225, 0.1, faintWarm), 0.5, 101}, drawLetter},
        {"form", {Material::Grey, pose(0.8, 6, 100), lamp(300, 0.16, cool), 0.4, 102}, drawForm},
        {"english-text",
         {Material::Dark,
          pose(1.4, 5, 75),
          shadowed(lamp(200, 0.12, faintWarm), {1.0, 0.62}, {0.36, 0.5}, 0.3),
          0.4,
          103},
         drawEnglishText},
        {"chinese-text",
         {Material::Walnut, pose(-0.7, 3, 60), lamp(250, 0.18, warm), 0.4, 104},
         drawChineseText},
        {"russian-text",
         {Material::Light,
          pose(0.9, 7, 95),
          shadowed(lamp(235, 0.1, faintWarm, 0.88), {0.1, 1.05}, {0.5, 0.5}, 0.2),
          0.5,
          105},
         drawRussianText},
        {"red-seal", {Material::Grey, pose(-1.6, 5, 110), lamp(215, 0.13, greenish), 0.4, 106}, drawRedSeal},
        {"blue-seal",
         {Material::Oak,
          pose(1.2, 4, 90),
          shadowed(lamp(320, 0.13, cool), {0.1, 0.1}, {0.42, 0.5}, 0.26),
          0.4,
          107},
         drawBlueSeal},
        {"receipt",
         {Material::Walnut, pose(2.4, 5, 85, 0.95, {0.06, 0}), lamp(240, 0.12, faintWarm), 1.2, 108},
         drawReceipt},
        {"card-front",
         {Material::Grey, pose(-4.5, 6, 100, 0.46, {-0.05, 0.02}), lamp(230, 0.12, faintWarm), 0.8, 109},
         drawCardFront},
        {"card-back",
         {Material::Dark, pose(3.5, 5, 80, 0.46, {0.03, -0.02}), lamp(230, 0.1, faintWarm), 0.8, 110},
         drawCardBack},
        {"codes", {Material::Dark, pose(-0.9, 4, 70), lamp(250, 0.12, cool), 0.4, 111}, drawCodesOnly},
        {"book", {Material::Oak, pose(0.8, 8, 90, 0.9), lamp(215, 0.12, warm), 5, 112}, {}},
    };
    return exhibits;
}

} // namespace deskpictures

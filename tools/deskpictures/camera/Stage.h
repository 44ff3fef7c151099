#pragma once

#include "Light.h"

#include <opencv2/core.hpp>

#include <vector>

namespace deskpictures {

/// The colours and the light of a scene while things are laid into it, one over the other.
class Stage
{
public:
    /// @param colours  8-bit sRGB, all that lies below  @param light  CV_32F, of the lamp alone; same size
    Stage(cv::Mat colours, cv::Mat light, double lampFromDegrees);
    /// A stage of its own with the same things in it.
    Stage copy() const;

    /// Lays a thing over all that is there; it hides the shadows below it and throws its own.
    /// @param thing  CV_8UC4, sRGB, premultiplied; the stage's size
    void lay(const cv::Mat& thing, const std::vector<Throw>& shadows);
    /// Multiplies the light by a thing's own shape.
    void shade(const cv::Mat& factor) { m_light = m_light.mul(factor); }

    const cv::Mat& colours() const { return m_colours; }
    const cv::Mat& light() const { return m_light; }

private:
    cv::Mat m_colours;
    cv::Mat m_light;
    cv::Mat m_lamp; // shared by copies, never written
    double m_lampFromDegrees;
};

/// The shadows of something flat whose edges stand this far above what lies below.
std::vector<Throw> sheetShadows(double thicknessMm, double pxPerMm);

} // namespace deskpictures

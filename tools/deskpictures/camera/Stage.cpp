#include "Stage.h"

#include "Layer.h"

namespace deskpictures {

Stage::Stage(cv::Mat colours, cv::Mat light, double lampFromDegrees)
    : m_colours(std::move(colours)), m_light(light.clone()), m_lamp(std::move(light)),
      m_lampFromDegrees(lampFromDegrees)
{
}

Stage Stage::copy() const
{
    Stage other = *this;
    other.m_colours = m_colours.clone();
    other.m_light = m_light.clone();
    return other;
}

void Stage::lay(const cv::Mat& thing, const std::vector<Throw>& shadows)
{
    cv::Mat alpha;
    layOver(m_colours, thing, alpha);
    for (int y = 0; y < m_light.rows; ++y) {
        const auto* cover = alpha.ptr<uchar>(y);
        const auto* lamp = m_lamp.ptr<float>(y);
        auto* light = m_light.ptr<float>(y);
        for (int x = 0; x < m_light.cols; ++x)
            light[x] += (lamp[x] - light[x]) * static_cast<float>(cover[x]) / 255;
    }
    for (const Throw& shadow : shadows)
        throwShadow(m_light, alpha, shadow, m_lampFromDegrees);
}

std::vector<Throw> sheetShadows(double thicknessMm, double pxPerMm)
{
    // A dark line at the edge itself and a wide, faint one around it.
    return {{0.5 * thicknessMm * pxPerMm, (0.35 + 0.4 * thicknessMm) * pxPerMm, 0.42},
            {1.6 * thicknessMm * pxPerMm, (2 + 2.2 * thicknessMm) * pxPerMm, 0.22}};
}

} // namespace deskpictures

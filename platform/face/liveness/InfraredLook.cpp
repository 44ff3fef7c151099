#include "InfraredLook.h"

#include "EyeFrame.h"
#include "Picture.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <initializer_list>

namespace face {

namespace {

// 0 up to `none`, 1 from `full` on; the two may be the other way round.
double grade(double value, double none, double full)
{
    return std::clamp((value - none) / (full - none), 0.0, 1.0);
}

class InfraredFace
{
public:
    InfraredFace(const cv::Mat& gray, const Landmarks& points) : gray_(gray), points_(points), frame_(points)
    {
    }

    double skin() const { return (around(-0.45, 0.6) + around(0.45, 0.6)) / 2; }

    /// The darkest that lies near each point of the brows: these are found to a tenth of the eyes' distance
    /// only.
    double brows() const
    {
        constexpr size_t first = 17, last = 26;
        constexpr double thickness = 0.05, near = 0.15;
        const int side = std::max(1, cvRound(thickness * frame_.unit())) * 2 + 1;
        double sum = 0;
        for (size_t i = first; i <= last; ++i) {
            const cv::Rect part = box(points_[i], near);
            if (part.empty())
                continue; // outside the picture: as dark as can be
            double darkest = 0;
            cv::Mat smooth;
            cv::blur(gray_(part), smooth, {side, side});
            cv::minMaxLoc(smooth, &darkest);
            sum += darkest;
        }
        return sum / static_cast<double>(last - first + 1);
    }

    /// The brightest and the darkest of both eyes; each that of the duller eye, since the one may be in a
    /// shadow.
    void eyes(double& brightest, double& darkest) const
    {
        constexpr double half = 0.22;
        double low[2], high[2];
        for (const int side : {0, 1}) {
            const cv::Point2f middle = side == 0 ? leftEye(points_) : rightEye(points_);
            const cv::Rect part = box(middle, half);
            low[side] = high[side] = 0;
            if (!part.empty())
                cv::minMaxLoc(gray_(part), &low[side], &high[side]);
        }
        brightest = std::min(high[0], high[1]);
        darkest = std::max(low[0], low[1]);
    }

    /// Just inside the edge of the cheeks, the brighter side.
    double edge() const { return std::max(around(-0.88, 0.55), around(0.88, 0.55)); }
    /// Beside the head, the brighter side; a side that lies outside the picture is dark.
    double behind() const { return std::max(around(-1.9, -0.2), around(1.9, -0.2)); }

private:
    cv::Rect box(cv::Point2f middle, double half) const
    {
        const auto r = static_cast<float>(std::max(1.0, half * frame_.unit()));
        return inside({middle.x - r, middle.y - r, 2 * r, 2 * r}, gray_);
    }
    double mean(cv::Point2f middle, double half) const
    {
        const cv::Rect part = box(middle, half);
        return part.empty() ? 0 : cv::mean(gray_(part))[0];
    }
    double around(double x, double y) const { return mean(frame_.at(x, y), 0.12); }

    const cv::Mat& gray_;
    const Landmarks& points_;
    EyeFrame frame_;
};

} // namespace

int infraredScore(const cv::Mat& gray, const Landmarks& points)
{
    constexpr double darkest = 40, brightest = 250; // beyond, the exposure hides what is looked for
    constexpr int unknown = 5, flat = 9, doubtful = 49;
    const InfraredFace face(gray, points);
    const double skin = face.skin();
    if (skin < darkest || skin > brightest)
        return unknown;
    double glint = 0, pupil = 0;
    face.eyes(glint, pupil);
    const double browContrast = (skin - face.brows()) / skin;
    const double pupilContrast = (skin - pupil) / skin;
    const double contrast = grade(browContrast, 0.12, 0.35) * grade(pupilContrast, 0.3, 0.6);
    const double light = grade(glint / skin, 1.0, 1.3);
    const double depth = grade(face.behind() / skin, 0.9, 0.6);
    const double roundness = grade(face.edge() / skin, 0.98, 0.85);
    const double evidence = light + depth + roundness;
    if (contrast < 0.25 || evidence < 0.25)
        return flat;
    const int score = cvRound(40 * contrast + 20 * evidence);
    // Ink may draw the shades of a round head, but neither lights in the eyes nor a ground far behind.
    return std::max(light, depth) < 0.5 ? std::min(score, doubtful) : score;
}

} // namespace face

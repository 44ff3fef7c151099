// Films of a desk as a document camera sees it: sheets, an arm that reaches in, light and lens that change.
#pragma once

#include "MadePages.h"

#include <optional>
#include <vector>

namespace made {

/// What can be seen at one moment. Millimetres on the desk, of which the picture shows 420 x 315; origin top
/// left.
struct Moment
{
    struct Lying
    {
        const cv::Mat* sheet = nullptr; ///< RGB, four pixels a millimetre
        cv::Point2d middle{210, 157};
        double degrees = 0; ///< clockwise
        bool operator==(const Lying& other) const
        {
            return sheet == other.sheet && middle == other.middle && degrees == other.degrees;
        }
    };
    struct Arm
    {
        cv::Point2d tips;
        double fromDegrees = 0; ///< where it comes from: 0 right, 90 below
        cv::Scalar skin{214, 160, 132}, cloth{52, 64, 92};
    };
    std::vector<Lying> sheets; ///< the lowest first
    std::optional<Arm> arm;

    double brightness = 1;
    cv::Vec3d white{1, 1, 1}; ///< factors of the white balance
    double beat = 0;          ///< amplitude of the bands that flickering light makes
    double beatPhase = 0;     ///< turns
    double shadow = -1;       ///< where a person's soft shadow lies, share of the width; outside 0 to 1: none
    double zoom = 1;
    cv::Point2d shake; ///< pixels
    double blur = 0;   ///< standard deviation, pixels of a picture 640 wide
};

class PageFilm
{
public:
    PageFilm(cv::Size frame, Desk desk, double noise = 2);
    /// The picture of the moment. Moments without an arm whose sheets have not moved are quick.
    cv::Mat picture(const Moment& moment);

private:
    void drawArm(const Moment::Arm& arm, cv::Mat& picture) const;
    void shineOn(const Moment& moment, cv::Mat& picture);

    double perMm_;
    cv::Mat desk_, ground_, grain_;
    std::vector<Moment::Lying> laidOut_;
    cv::RNG random_{7};
};

} // namespace made

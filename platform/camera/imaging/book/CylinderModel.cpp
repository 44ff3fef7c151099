#include "CylinderModel.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

PageProfile::PageProfile(double length, double gather) : length_(length)
{
    for (int k = 0; k < knots; ++k)
        places_[static_cast<size_t>(k)] = length * std::pow(static_cast<double>(k) / (knots - 1), gather);
    build();
}

double PageProfile::slopeAt(double distance) const
{
    size_t k = 1;
    while (k + 1 < knots && places_[k] < distance)
        ++k;
    const double share = std::clamp((distance - places_[k - 1]) / (places_[k] - places_[k - 1]), 0.0, 1.0);
    return slopes[k - 1] + share * (slopes[k] - slopes[k - 1]);
}

void PageProfile::build()
{
    const double step = length_ / samples;
    table_[0] = {0, 0};
    for (size_t i = 0; i < samples; ++i) {
        const double slope = slopeAt((static_cast<double>(i) + 0.5) * step);
        table_[i + 1] = table_[i] + step * cv::Point2d(std::cos(slope), std::sin(slope));
    }
}

cv::Point2d PageProfile::at(double distance) const
{
    const double place = distance / length_ * samples;
    const size_t i = static_cast<size_t>(std::clamp(place, 0.0, samples - 1.0));
    return table_[i] + (place - static_cast<double>(i)) * (table_[i + 1] - table_[i]);
}

void CylinderModel::prepare()
{
    const double c = std::cos(turn), s = std::sin(turn), ct = std::cos(tilt), st = std::sin(tilt);
    across_ = {c, s, 0};
    along_ = {-s * ct, c * ct, st};
    down_ = across_.cross(along_);
    origin_ = {spine.x / focal, spine.y / focal, 1};
    eye_ = {-origin_.dot(across_), -origin_.dot(along_), origin_.dot(down_)};
    for (size_t page = 0; page < 2; ++page) {
        pages[page].build();
        const double sign = page ? 1 : -1;
        double farthest = -1e9;
        for (size_t i = 0; i <= PageProfile::samples; ++i) {
            // What a fold hides is taken for its edge.
            const cv::Point2d at = pages[page].table()[i];
            farthest = std::max(farthest, (at.x - sign * eye_[0]) / std::max(0.05, eye_[2] - at.y));
            bearing_[page][i] = farthest;
        }
    }
}

cv::Point2d CylinderModel::toFlat(const cv::Point2d& frame, bool isRight) const
{
    const cv::Vec3d ray(frame.x / focal, frame.y / focal, 1);
    const double sign = isRight ? 1 : -1, down = std::max(0.05, ray.dot(down_));
    const double bearing = sign * ray.dot(across_) / down;
    const auto& table = bearing_[isRight];
    const auto found = std::lower_bound(table.begin() + 1, table.end() - 1, bearing);
    const size_t i = static_cast<size_t>(found - table.begin()) - 1;
    const double share = (bearing - table[i]) / std::max(1e-9, table[i + 1] - table[i]);
    const double distance =
        std::clamp(static_cast<double>(i) + share, -PageProfile::samples * 1.0, 3.0 * PageProfile::samples) *
        pages[isRight].length() / PageProfile::samples;
    const double height = pages[isRight].at(distance).y;
    const double reach = (eye_[2] - height) / down;
    return {sign * distance, eye_[1] + reach * ray.dot(along_)};
}

cv::Point2d CylinderModel::toFrame(const cv::Point2d& flat, bool isRight) const
{
    const double sign = isRight ? 1 : -1;
    const cv::Point2d cross = pages[isRight].at(sign * flat.x);
    const cv::Vec3d at = origin_ + sign * cross.x * across_ + flat.y * along_ - cross.y * down_;
    const double depth = std::max(0.05, at[2]);
    return {focal * at[0] / depth, focal * at[1] / depth};
}

} // namespace mirvak

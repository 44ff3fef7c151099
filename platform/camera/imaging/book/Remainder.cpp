#include "Remainder.h"

#include "RobustMean.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

// Legendre's polynomials from the first on; a shift of a whole line cannot be seen in it.
std::array<double, Remainder::across> Remainder::wavesAt(double s) const
{
    const double u = std::clamp(2 * (s - area_.x) / area_.width - 1, -1.0, 1.0);
    std::array<double, across> waves{};
    double before = 1, at = u;
    for (int k = 0; k < across; ++k) {
        waves[static_cast<size_t>(k)] = at;
        const double next = ((2 * k + 3) * u * at - (k + 1) * before) / (k + 2);
        before = at;
        at = next;
    }
    return waves;
}

std::array<double, Remainder::down> Remainder::powersAt(double v) const
{
    const double w = std::clamp(2 * (v - area_.y) / area_.height - 1, -1.0, 1.0);
    return {1, w, 1.5 * w * w - 0.5, 2.5 * w * w * w - 1.5 * w};
}

Remainder::Remainder(const CylinderModel& model,
                     const std::vector<Track>& tracks,
                     bool isRight,
                     const cv::Rect2d& area,
                     double noise)
    : area_(area)
{
    constexpr int count = across * down;
    using Row = cv::Matx<double, count, 1>;
    cv::Matx<double, count, count> normal = cv::Matx<double, count, count>::zeros();
    Row slope = Row::zeros();
    for (const Track& track : tracks) {
        if (track.isRuling || track.isRight != isRight)
            continue;
        std::vector<double> values;
        std::vector<Row> rows;
        for (const cv::Point2d& frame : track.points) {
            const cv::Point2d flat = model.toFlat(frame, isRight);
            const auto waves = wavesAt(flat.x);
            const auto powers = powersAt(flat.y);
            Row row;
            for (int k = 0; k < count; ++k)
                row(k) = waves[static_cast<size_t>(k / down)] * powers[static_cast<size_t>(k % down)];
            rows.push_back(row);
            values.push_back(flat.y * model.focal);
        }
        const double middle = medianOf(values);
        std::vector<double> off(values.size());
        std::transform(
            values.begin(), values.end(), off.begin(), [&](double v) { return std::abs(v - middle); });
        const double sigma = std::max(noise, 1.4826 * medianOf(off));
        Row mean = Row::zeros();
        double centre = 0, total = 1e-12;
        for (size_t i = 0; i < values.size(); ++i) {
            off[i] = track.weight * tukeyWeight((values[i] - middle) / sigma) / (sigma * sigma);
            mean += rows[i] * off[i];
            centre += values[i] * off[i];
            total += off[i];
        }
        mean *= 1 / total;
        centre /= total;
        for (size_t i = 0; i < values.size(); ++i) {
            if (off[i] <= 0)
                continue;
            const Row row = rows[i] - mean;
            for (int a = 0; a < count; ++a) {
                slope(a) += off[i] * row(a) * (values[i] - centre);
                for (int b = 0; b < count; ++b)
                    normal(a, b) += off[i] * row(a) * row(b);
            }
        }
    }
    for (int k = 0; k < count; ++k) {
        // The finer a wave, the smaller it is expected; two letters' noise at most.
        const int wave = k / down, power = k % down;
        const double expected = 8 * noise / ((1 + wave) * (1 + power));
        normal(k, k) += 1 / (expected * expected);
    }
    Row shares;
    if (!cv::solve(normal, slope, shares, cv::DECOMP_CHOLESKY))
        return;
    for (int k = 0; k < count; ++k)
        shares_[static_cast<size_t>(k)] = shares(k) / model.focal;
}

double Remainder::at(const cv::Point2d& flat) const
{
    const auto waves = wavesAt(flat.x);
    const auto powers = powersAt(flat.y);
    double sum = 0;
    for (size_t k = 0; k < shares_.size(); ++k)
        sum += shares_[k] * waves[k / down] * powers[k % down];
    return sum;
}

} // namespace mirvak

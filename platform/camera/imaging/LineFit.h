#pragma once

#include <optional>

namespace mirvak {

/// Weighted least squares of a straight line y = start + rise x, point by point.
class LineFit
{
public:
    struct Line
    {
        double start = 0, rise = 0;
    };

    void add(double x, double y, double weight)
    {
        w_ += weight;
        wx_ += weight * x;
        wy_ += weight * y;
        wxx_ += weight * x * x;
        wxy_ += weight * x * y;
    }
    /// Nothing when the points lie, by their weights, at one x.
    std::optional<Line> line() const
    {
        constexpr double leastSpread = 1e-6;
        const double spread = w_ * wxx_ - wx_ * wx_;
        if (!(spread > leastSpread * w_ * w_))
            return std::nullopt;
        const double rise = (w_ * wxy_ - wx_ * wy_) / spread;
        return Line{(wy_ - rise * wx_) / w_, rise};
    }

private:
    double w_ = 0, wx_ = 0, wy_ = 0, wxx_ = 0, wxy_ = 0; ///< sums
};

} // namespace mirvak

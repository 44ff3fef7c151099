#include "BookFit.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int slopesFrom = 3; // after turn, tilt and focal length
constexpr int unknowns = slopesFrom + 2 * PageProfile::knots;
using Vector = cv::Matx<double, unknowns, 1>;
using Square = cv::Matx<double, unknowns, unknowns>;

constexpr int mostRounds = 25;
constexpr size_t mostPoints = 3000;
constexpr double tukey = 4.685;      // of the standard deviation: 95 % as good as least squares
constexpr double spineNoise = 0.003; // frame: how exactly a valley's line is known
constexpr double usualFocal = 1.2;   // half of a wide phone's view, three quarters of a book camera's
constexpr double steepest = 1.15;    // radians: steeper paper is hardly seen from above
constexpr double step = 1e-5;

double medianOf(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double tukeyWeight(double deviations)
{
    const double share = deviations / tukey;
    return std::abs(share) >= 1 ? 0 : (1 - share * share) * (1 - share * share);
}

struct Point
{
    cv::Point2d frame;
    bool isRight, isRuling;
};

// A line's points, as indices, with what says how much each counts.
struct Line
{
    size_t first, last;
    double weight;
};

class Fit
{
public:
    Fit(const CylinderModel& model,
        const std::vector<Track>& tracks,
        const std::optional<Spine>& spine,
        double noise)
        : model_(model), spine_(spine), noise_(noise)
    {
        size_t count = 0;
        for (const Track& track : tracks)
            count += track.points.size();
        const size_t every = 1 + count / mostPoints;
        for (const Track& track : tracks) {
            const size_t first = points_.size();
            for (size_t i = every > 1 ? first % every : 0; i < track.points.size(); i += every)
                points_.push_back({track.points[i], track.isRight, track.isRuling});
            lines_.push_back({first, points_.size(), track.weight});
        }
        weights_.resize(points_.size());
    }

    double run(CylinderModel& model)
    {
        Vector at = vectorOf(model_);
        double damping = 1e-3;
        for (int round = 0; round < mostRounds; ++round) {
            const std::vector<double> values = valuesOf(at);
            weigh(values);
            const double cost = costOf(at, values);
            Square normal = Square::zeros();
            Vector slope = Vector::zeros();
            assemble(at, values, normal, slope);
            bool better = false;
            for (int attempt = 0; attempt < 6 && !better; ++attempt, damping *= 8) {
                Square damped = normal;
                for (int i = 0; i < unknowns; ++i)
                    damped(i, i) *= 1 + damping;
                Vector change;
                if (!cv::solve(damped, -slope, change, cv::DECOMP_CHOLESKY))
                    continue;
                const Vector there = limited(at + change);
                const double thereCost = costOf(there, valuesOf(there));
                if (thereCost < cost) {
                    better = true;
                    at = there;
                    damping = std::max(1e-7, damping / 60);
                    if (cost - thereCost < 1e-4 * cost)
                        round += mostRounds / 3;
                }
            }
            if (!better)
                break;
        }
        apply(at, model);
        return left(valuesOf(at));
    }

private:
    static Vector vectorOf(const CylinderModel& model)
    {
        Vector v;
        v(0) = model.turn;
        v(1) = model.tilt;
        v(2) = std::log(model.focal);
        for (int k = 0; k < 2 * PageProfile::knots; ++k)
            v(slopesFrom + k) = model.pages[static_cast<size_t>(k / PageProfile::knots)]
                                    .slopes[static_cast<size_t>(k % PageProfile::knots)];
        return v;
    }

    static Vector limited(Vector v)
    {
        v(0) = std::clamp(v(0), -0.6, 0.6);
        v(1) = std::clamp(v(1), -0.6, 0.6);
        v(2) = std::clamp(v(2), std::log(0.6), std::log(3.0));
        for (int k = slopesFrom; k < unknowns; ++k)
            v(k) = std::clamp(v(k), -steepest, steepest);
        return v;
    }

    static void apply(const Vector& v, CylinderModel& model)
    {
        model.turn = v(0);
        model.tilt = v(1);
        model.focal = std::exp(v(2));
        for (int k = 0; k < 2 * PageProfile::knots; ++k)
            model.pages[static_cast<size_t>(k / PageProfile::knots)]
                .slopes[static_cast<size_t>(k % PageProfile::knots)] = v(slopesFrom + k);
        model.prepare();
    }

    double valueOf(const CylinderModel& model, const Point& point) const
    {
        const cv::Point2d flat = model.toFlat(point.frame, point.isRight);
        return (point.isRuling ? flat.x : flat.y) * model.focal;
    }

    std::vector<double> valuesOf(const Vector& at)
    {
        apply(at, model_);
        std::vector<double> values(points_.size());
        for (size_t i = 0; i < values.size(); ++i)
            values[i] = valueOf(model_, points_[i]);
        return values;
    }

    void weigh(const std::vector<double>& values)
    {
        for (const Line& line : lines_) {
            const std::vector<double> of(values.begin() + static_cast<long>(line.first),
                                         values.begin() + static_cast<long>(line.last));
            const double middle = medianOf(of);
            std::vector<double> off(of.size());
            std::transform(of.begin(), of.end(), off.begin(), [&](double v) { return std::abs(v - middle); });
            const double sigma = std::max(noise_, 1.4826 * medianOf(off));
            for (size_t i = line.first; i < line.last; ++i)
                weights_[i] = line.weight * tukeyWeight((values[i] - middle) / sigma) / (sigma * sigma);
        }
    }

    double centreOf(const Line& line, const std::vector<double>& values) const
    {
        double sum = 0, weight = 1e-12;
        for (size_t i = line.first; i < line.last; ++i) {
            sum += weights_[i] * values[i];
            weight += weights_[i];
        }
        return sum / weight;
    }

    // What the spine and common sense say: deviations in their standard deviations.
    std::vector<double> priors(const Vector& at)
    {
        std::vector<double> off{at(0) / 0.35, at(1) / 0.15, (at(2) - std::log(usualFocal)) / 0.12};
        for (int page = 0; page < 2; ++page) {
            const double* slope = &at.val[slopesFrom + page * PageProfile::knots];
            for (int k = 0; k < PageProfile::knots; ++k) {
                off.push_back(slope[k] / 0.7);
                if (k > 0)
                    off.push_back((slope[k] - slope[k - 1]) / 0.35);
                if (k > 1)
                    off.push_back((slope[k] - 2 * slope[k - 1] + slope[k - 2]) / 0.2);
            }
        }
        if (spine_) {
            apply(at, model_);
            const cv::Point2d normal(std::cos(spine_->turn), std::sin(spine_->turn));
            for (const double v : {-0.25, 0.25})
                off.push_back((model_.toFrame({0, v}, true) - spine_->middle).dot(normal) / spineNoise);
        }
        return off;
    }

    double costOf(const Vector& at, const std::vector<double>& values)
    {
        double cost = 0;
        for (const Line& line : lines_) {
            const double centre = centreOf(line, values);
            for (size_t i = line.first; i < line.last; ++i)
                cost += weights_[i] * (values[i] - centre) * (values[i] - centre);
        }
        for (const double off : priors(at))
            cost += off * off;
        return cost;
    }

    void assemble(const Vector& at, const std::vector<double>& values, Square& normal, Vector& slope)
    {
        std::vector<Vector> rows(points_.size());
        const std::vector<double> off = priors(at);
        std::vector<Vector> priorRows(off.size());
        for (int k = 0; k < unknowns; ++k) {
            Vector moved = at;
            moved(k) += step;
            const std::vector<double> there = valuesOf(moved);
            for (size_t i = 0; i < rows.size(); ++i)
                rows[i](k) = (there[i] - values[i]) / step;
            const std::vector<double> offThere = priors(moved);
            for (size_t i = 0; i < off.size(); ++i)
                priorRows[i](k) = (offThere[i] - off[i]) / step;
        }
        for (const Line& line : lines_) {
            const double centre = centreOf(line, values);
            Vector mean = Vector::zeros();
            double weight = 1e-12;
            for (size_t i = line.first; i < line.last; ++i) {
                mean += rows[i] * weights_[i];
                weight += weights_[i];
            }
            mean *= 1 / weight;
            for (size_t i = line.first; i < line.last; ++i) {
                if (weights_[i] > 0)
                    add(rows[i] - mean, values[i] - centre, weights_[i], normal, slope);
            }
        }
        for (size_t i = 0; i < off.size(); ++i)
            add(priorRows[i], off[i], 1, normal, slope);
        for (int i = 0; i < unknowns; ++i) {
            for (int j = 0; j < i; ++j)
                normal(i, j) = normal(j, i);
            normal(i, i) += 1e-9;
        }
    }

    static void add(const Vector& row, double off, double weight, Square& normal, Vector& slope)
    {
        for (int i = 0; i < unknowns; ++i) {
            const double a = weight * row(i);
            slope(i) += a * off;
            for (int j = i; j < unknowns; ++j)
                normal(i, j) += a * row(j);
        }
    }

    double left(const std::vector<double>& values) const
    {
        std::vector<double> off;
        for (const Line& line : lines_) {
            if (line.first == line.last || points_[line.first].isRuling)
                continue;
            const double centre = centreOf(line, values);
            for (size_t i = line.first; i < line.last; ++i)
                off.push_back(std::abs(values[i] - centre));
        }
        return medianOf(off);
    }

    CylinderModel model_;
    std::optional<Spine> spine_;
    double noise_;
    std::vector<Point> points_;
    std::vector<Line> lines_;
    std::vector<double> weights_;
};

} // namespace

double fitBook(CylinderModel& model,
               const std::vector<Track>& tracks,
               const std::optional<Spine>& spine,
               double noise)
{
    return Fit(model, tracks, spine, noise).run(model);
}

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
        const double expected = 8 * noise / ((1 + k / down) * (1 + k % down));
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

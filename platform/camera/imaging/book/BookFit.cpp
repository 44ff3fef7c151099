#include "BookFit.h"

#include "RobustMean.h"

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
constexpr double spineNoise = 0.003; // frame: how exactly a valley's line is known
constexpr double usualFocal = 1.2;   // half of a wide phone's view, three quarters of a book camera's
constexpr double steepest = 1.15;    // radians: steeper paper is hardly seen from above
constexpr double step = 1e-5;

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

} // namespace mirvak

// Draws the prints of the virtual desk's fingers, which are nobody's: a wave whose phase runs around a core,
// with dislocations where ridges end or fork. The same prints each time.
//   deskprints FOLDER
#include <QDir>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace {

constexpr int width = 300, height = 400; // px at 500 dots an inch
constexpr double ridge = 9;              // px from one to the next
constexpr int fingers = 3;

struct Fork
{
    double x, y;
    int turns; ///< of the phase around it: one ridge more above or below
};

class Print
{
public:
    explicit Print(unsigned seed) : random_(seed), shape_(0.75 + 0.15 * seed), tilt_(0.3 * seed - 0.6)
    {
        std::uniform_real_distribution<double> across(-110, 110), along(-160, 160);
        for (int i = 0; i < 34; ++i)
            forks_.push_back({across(random_), along(random_), i % 2 ? 1 : -1});
    }

    QImage draw()
    {
        QImage image(width, height, QImage::Format_Grayscale8);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                image.scanLine(y)[x] = grey(x - width / 2.0, y - height * 0.45);
        return image;
    }

private:
    double phase(double x, double y) const
    {
        const double bent = y + tilt_ * std::hypot(x, 20) + 6 * std::sin(x / 40) + 5 * std::sin(y / 33);
        double phase = 2 * M_PI / ridge * std::hypot(x * shape_, bent < 0 ? bent : bent * 0.55);
        for (const Fork& fork : forks_)
            phase += fork.turns * std::atan2(y - fork.y, x - fork.x);
        return phase;
    }

    /// How firmly the skin lies on the glass: 1 in the middle, 0 outside, blotched in between.
    static double touch(double x, double y)
    {
        const double out = std::hypot(x / 128, (y - 20) / 182);
        const double blotches = 0.05 * std::sin(x / 17 + y / 29) * std::sin(y / 13 - x / 31);
        return std::clamp((1 - out + blotches) * 5, 0.0, 1.0);
    }

    uchar grey(double x, double y)
    {
        std::normal_distribution<double> noise(0, 9);
        const double ink = std::clamp(0.5 + 1.1 * std::cos(phase(x, y)), 0.0, 1.0) * touch(x, y);
        return static_cast<uchar>(std::clamp(245 - 200 * ink + noise(random_), 0.0, 255.0));
    }

    std::mt19937 random_;
    double shape_, tilt_;
    std::vector<Fork> forks_;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        std::fputs("usage: deskprints FOLDER\n", stderr);
        return 2;
    }
    for (unsigned finger = 0; finger < fingers; ++finger) {
        const QString file =
            QStringLiteral("%1/finger-%2.png").arg(QString::fromLocal8Bit(argv[1])).arg(finger + 1);
        if (!Print(finger).draw().save(file)) {
            std::fprintf(stderr, "deskprints: cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}

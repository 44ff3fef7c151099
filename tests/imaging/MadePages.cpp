#include "MadePages.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace made {

namespace {

const cv::Scalar paper(240, 238, 232), ink(45, 42, 45);

// Words of random letters, so that every line differs.
std::string words(cv::RNG& random, int letters)
{
    std::string text;
    while (static_cast<int>(text.size()) < letters) {
        for (int i = random.uniform(2, 9); i > 0; --i)
            text += static_cast<char>('a' + random.uniform(0, 26));
        text += ' ';
    }
    text.resize(static_cast<size_t>(letters));
    return text;
}

void write(cv::Mat& page,
           const std::string& text,
           cv::Point at,
           double scale,
           int thick,
           int font = cv::FONT_HERSHEY_SIMPLEX)
{
    cv::putText(page, text, at, font, scale, ink, std::max(1, thick), cv::LINE_AA);
}

// Share of each pixel that lies inside, from its distance to the nearest edge. The picture's pixels begin at
// `origin`.
cv::Mat coverage(cv::Size size, const Corners& corners, cv::Point origin)
{
    std::array<cv::Vec3d, 4> edges; // distance = a x + b y + c
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d way = corners[(i + 1) % 4] - corners[i], unit = way / cv::norm(way);
        edges[i] = {-unit.y, unit.x, unit.y * corners[i].x - unit.x * corners[i].y};
    }
    cv::Mat mask(size, CV_8UC1);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            double inside = 1;
            for (const cv::Vec3d& edge : edges)
                inside =
                    std::min(inside, 0.5 + edge[0] * (x + origin.x) + edge[1] * (y + origin.y) + edge[2]);
            mask.at<unsigned char>(y, x) = cv::saturate_cast<unsigned char>(255 * inside);
        }
    }
    return mask;
}

cv::Mat woodDesk(cv::Size size, cv::RNG& random)
{
    cv::Mat grain(size.height / 4, 8, CV_8UC1), wide;
    random.fill(grain, cv::RNG::UNIFORM, 0, 60);
    cv::GaussianBlur(grain, grain, {1, 5}, 0);
    cv::resize(grain, wide, size, 0, 0, cv::INTER_CUBIC);
    std::array<cv::Mat, 3> planes;
    for (const auto& [plane, base, share] :
         {std::tuple(0, 150 - 0.25, 0.5), {1, 100 - 0.25, 0.5}, {2, 60 - 0.33, 1 / 3.0}})
        wide.convertTo(planes[static_cast<size_t>(plane)], CV_8U, share, base);
    cv::Mat desk;
    cv::merge(planes.data(), 3, desk);
    return desk;
}

// The mask, 0 to 255, is the share of what is put over the ground.
void mix(cv::Mat& ground, const cv::Mat& over, const cv::Mat& mask)
{
    cv::Mat share, before, after;
    cv::cvtColor(mask, share, cv::COLOR_GRAY2RGB);
    cv::multiply(ground, cv::Scalar::all(255) - share, before, 1 / 255.0, CV_32F);
    cv::multiply(over, share, after, 1 / 255.0, CV_32F);
    cv::add(before, after, ground, cv::noArray(), CV_8U);
}

} // namespace

cv::Mat blankPage(cv::Size size)
{
    return {size, CV_8UC3, paper};
}

cv::Mat textPage(cv::Size size, int lineHeight, unsigned seed)
{
    cv::RNG random(seed);
    cv::Mat page = blankPage(size);
    const int margin = size.width / 9;
    const double scale = lineHeight / 42.0;
    int line = 0;
    for (int y = margin + lineHeight; y < size.height - margin; y += lineHeight, ++line) {
        if (line % 9 == 8) // paragraph
            continue;
        const double share = line % 9 == 7 ? 0.55 : 1;
        const int letters = static_cast<int>(share * (size.width - 2 * margin) / (19.5 * scale));
        write(
            page, words(random, letters), {margin, y}, scale, cvRound(scale * 1.6), cv::FONT_HERSHEY_COMPLEX);
    }
    return page;
}

cv::Mat tablePage(cv::Size size)
{
    cv::Mat page = blankPage(size);
    const cv::Rect table(size.width / 8, size.height / 8, size.width * 3 / 4, size.height * 3 / 4);
    const int thick = std::max(2, size.width / 500);
    for (int i = 0; i <= 4; ++i) {
        const int x = table.x + table.width * i / 4;
        cv::line(page, {x, table.y}, {x, table.br().y}, ink, thick);
    }
    for (int i = 0; i <= 12; ++i) {
        const int y = table.y + table.height * i / 12;
        cv::line(page, {table.x, y}, {table.br().x, y}, ink, thick);
        if (i < 12)
            write(page,
                  "cell " + std::to_string(i),
                  {table.x + 12, y + table.height / 18},
                  size.width / 1400.0,
                  thick);
    }
    return page;
}

cv::Mat cardPage(cv::Size size)
{
    cv::Mat card(size, CV_8UC3, cv::Scalar(205, 222, 232));
    const cv::Rect portrait(size.width * 2 / 3, size.height / 6, size.width / 4, size.height / 2);
    cv::rectangle(card, portrait, cv::Scalar(120, 105, 95), cv::FILLED);
    for (int i = 0; i < 5; ++i)
        write(card,
              "Name field",
              {size.width / 16, size.height * (i + 1) / 6},
              size.width / 500.0,
              size.width / 250);
    return card;
}

void stamp(cv::Mat& sheet, cv::Point centre, int diameter, cv::Scalar colour)
{
    cv::Mat cover(sheet.size(), CV_8UC1, cv::Scalar(0));
    cv::circle(cover, centre, diameter / 2 - diameter / 24, 255, std::max(2, diameter / 24), cv::LINE_AA);
    cv::rectangle(cover,
                  cv::Rect(centre.x - diameter / 4, centre.y - diameter / 10, diameter / 2, diameter / 5),
                  255,
                  cv::FILLED);
    mix(sheet, sheet.mul(cv::Scalar(colour), 1 / 255.0), cover);
}

cv::Mat desk(cv::Size size, Desk kind, unsigned seed)
{
    cv::RNG random(seed);
    const auto plain = [&size](int red, int green, int blue) {
        return cv::Mat(size, CV_8UC3, cv::Scalar(red, green, blue));
    };
    switch (kind) {
    case Desk::light:
        return plain(205, 198, 188);
    case Desk::dark:
        return plain(52, 56, 60);
    case Desk::coloured:
        return plain(40, 110, 90);
    case Desk::wood:
        return woodDesk(size, random);
    case Desk::checked: {
        cv::Mat cloth(size, CV_8UC3, cv::Scalar(170, 60, 60));
        const int square = size.width / 22;
        for (int y = 0; y < size.height; y += square) {
            for (int x = (y / square) % 2 * square; x < size.width; x += 2 * square)
                cv::rectangle(cloth, cv::Rect(x, y, square, square), cv::Scalar(215, 205, 200), cv::FILLED);
        }
        return cloth;
    }
    case Desk::noisy:
        break;
    }
    cv::Mat rough(size.height / 3, size.width / 3, CV_8UC3), ground;
    random.fill(rough, cv::RNG::NORMAL, cv::Scalar(110, 105, 100), cv::Scalar(30, 30, 30));
    cv::resize(rough, ground, size, 0, 0, cv::INTER_LINEAR);
    return ground;
}

void lay(cv::Mat& whole, const cv::Mat& sheet, const Corners& corners, double dropShadow)
{
    const double w = sheet.cols, h = sheet.rows;
    // The sheet's outer edges lie half a pixel outside its outermost pixel centres.
    const std::array<cv::Point2f, 4> from{cv::Point2d(-0.5, -0.5),
                                          cv::Point2d(w - 0.5, -0.5),
                                          cv::Point2d(w - 0.5, h - 0.5),
                                          cv::Point2d(-0.5, h - 0.5)};
    std::array<cv::Point2f, 4> to;
    std::copy(corners.begin(), corners.end(), to.begin());
    // Only what the sheet and its shadow reach.
    const int shift = whole.cols / 200;
    const double soft = whole.cols / 300.0;
    const int reach = shift + cvRound(4 * soft) + 2;
    const cv::Rect place = cv::boundingRect(std::vector<cv::Point2f>(to.begin(), to.end()));
    const cv::Rect part =
        cv::Rect(place.x - reach, place.y - reach, place.width + 2 * reach, place.height + 2 * reach) &
        cv::Rect({0, 0}, whole.size());
    if (part.empty())
        return;
    for (cv::Point2f& corner : to)
        corner -= cv::Point2f(part.tl());
    cv::Mat ground = whole(part);
    const cv::Mat onto = cv::getPerspectiveTransform(from.data(), to.data());
    const cv::Mat mask = coverage(ground.size(), corners, part.tl());
    cv::Mat seen;
    cv::warpPerspective(sheet, seen, onto, ground.size(), cv::INTER_AREA, cv::BORDER_REPLICATE);
    if (dropShadow < 1) {
        cv::Mat shade;
        const cv::Mat move = (cv::Mat_<double>(2, 3) << 1, 0, shift, 0, 1, shift);
        cv::warpAffine(mask, shade, move, mask.size());
        cv::GaussianBlur(shade, shade, {0, 0}, soft);
        shade.convertTo(shade, CV_32F, -(1 - dropShadow) / 255, 1);
        cv::cvtColor(shade, shade, cv::COLOR_GRAY2RGB);
        cv::multiply(ground, shade, ground, 1, CV_8U);
    }
    mix(ground, seen, mask);
}

// Drawing it takes most of a scene's time, and many scenes are of one size.
static const cv::Mat& unitNoise(cv::Size size, unsigned seed)
{
    static cv::Mat noise;
    static unsigned drawn = 0;
    if (noise.size() != size || drawn != seed) {
        noise.create(size, CV_32FC3);
        cv::RNG(seed).fill(noise, cv::RNG::NORMAL, 0, 1);
        drawn = seed;
    }
    return noise;
}

void shine(cv::Mat& picture, const Light& light, unsigned seed)
{
    const cv::Mat& noise = unitNoise(picture.size(), seed);
    const auto sigma = static_cast<float>(light.noise);
    const double soft = picture.cols / 60.0;
    for (int y = 0; y < picture.rows; ++y) {
        const double v = static_cast<double>(y) / picture.rows;
        const auto* n = noise.ptr<cv::Vec3f>(y);
        auto* p = picture.ptr<cv::Vec3b>(y);
        for (int x = 0; x < picture.cols; ++x) {
            const double u = static_cast<double>(x) / picture.cols;
            double gain = light.darkest + (1 - light.darkest) * (1 - 0.5 * (u + v));
            if (light.shadow < 1) { // its edge runs slantwise through the right half
                const double inside = 1 / (1 + std::exp(-(x - picture.cols * (0.62 + 0.2 * v)) / soft));
                gain *= 1 - inside * (1 - light.shadow);
            }
            const auto factor = static_cast<float>(gain);
            for (int c = 0; c < 3; ++c)
                p[x][c] =
                    cv::saturate_cast<unsigned char>(static_cast<float>(p[x][c]) * factor + sigma * n[x][c]);
        }
    }
}

Corners placed(cv::Point2d centre, cv::Size2d size, double degrees, double tilt)
{
    const double angle = degrees * CV_PI / 180, c = std::cos(angle), s = std::sin(angle);
    Corners corners;
    for (size_t i = 0; i < 4; ++i) {
        const double x = (i == 0 || i == 3 ? -0.5 : 0.5) * size.width, y = (i < 2 ? -0.5 : 0.5) * size.height;
        const double px = c * x - s * y, py = s * x + c * y;
        // Depth grows towards the top of the picture.
        const double scale = 1 / (1 - tilt * py / std::max(size.width, size.height));
        corners[i] = centre + cv::Point2d(px * scale, py * scale);
    }
    return corners;
}

Corners photographed(cv::Size frame, cv::Size2d sheet, double focal, double across, cv::Vec3d turnBackSide)
{
    const cv::Vec3d angle = turnBackSide * (CV_PI / 180);
    const double distance = focal * sheet.width / across;
    Corners corners;
    for (size_t i = 0; i < 4; ++i) {
        const double x = (i == 0 || i == 3 ? -0.5 : 0.5) * sheet.width,
                     y = (i < 2 ? -0.5 : 0.5) * sheet.height;
        const double turnedX = std::cos(angle[0]) * x - std::sin(angle[0]) * y;
        const double turnedY = std::sin(angle[0]) * x + std::cos(angle[0]) * y;
        // Tipped back about the horizontal axis, then sideways about the vertical one.
        const double backY = std::cos(angle[1]) * turnedY, backZ = -std::sin(angle[1]) * turnedY;
        const double sideX = std::cos(angle[2]) * turnedX + std::sin(angle[2]) * backZ;
        const double sideZ = distance + std::cos(angle[2]) * backZ - std::sin(angle[2]) * turnedX;
        corners[i] = {0.5 * (frame.width - 1) + focal * sideX / sideZ,
                      0.5 * (frame.height - 1) + focal * backY / sideZ};
    }
    return corners;
}

double farthest(const Corners& a, const Corners& b)
{
    double most = 0;
    for (size_t i = 0; i < 4; ++i)
        most = std::max(most, cv::norm(a[i] - b[i]));
    return most;
}

void finger(cv::Mat& rgb, const cv::Point& tip, const cv::Point& hand)
{
    for (int width = 56; width > 0; width -= 4)
        cv::line(rgb, tip, hand, cv::Scalar(205, 148, 112) * (1.1 - width / 140.0), width, cv::LINE_AA);
}

} // namespace made

// Learns what ideographs look like, from fonts: each character in each face, small and large, worn and
// blurred as pages are, with pieces of its neighbours.
//   learn_glyphs OUT SEED FACE... [--test FACE...]
// FACE is a font's file or FILE:INDEX. Writes share/models/glyphs/han.glyphs (OUT), and prints how many
// characters of the faces behind --test, which were not learnt from, are told right.
#include "Fonts.h"

#include "GlyphBook.h"
#include "GlyphFeatures.h"

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

using mirvak::GlyphBook;
using mirvak::glyphFeatures;

namespace {

using Faces = std::vector<std::unique_ptr<Face>>;

constexpr int looksEach = 3; // of each character in each face
constexpr int dimensions = 96;
constexpr double smoothing = 0.02; // of the mean variance: directions of which the fonts tell little

// As it comes out of a camera: size, focus, weight of the strokes, grain, and where it was cut.
cv::Mat worn(const cv::Mat& drawn, cv::RNG& any)
{
    const int rim = 2 + drawn.rows / 8;
    cv::Mat grey;
    cv::copyMakeBorder(drawn, grey, rim, rim, rim, rim, cv::BORDER_CONSTANT, 255);
    const double angle = any.gaussian(0.7);
    cv::Mat turn = cv::getRotationMatrix2D({grey.cols / 2.0F, grey.rows / 2.0F}, angle, 1);
    turn.at<double>(0, 2) += any.uniform(-0.5, 0.5);
    turn.at<double>(1, 2) += any.uniform(-0.5, 0.5);
    cv::warpAffine(grey, grey, turn, grey.size(), cv::INTER_LINEAR, cv::BORDER_CONSTANT, 255);
    cv::GaussianBlur(grey, grey, {}, any.uniform(0.3, 0.3 + 0.025 * drawn.rows));
    // What the paper's white takes of the soft rim, and the light of the ink.
    grey.convertTo(grey, CV_8U, any.uniform(0.55, 1.0) * any.uniform(1.0, 1.25), 0);
    const double gain = any.uniform(1.0, 1.2);
    grey.convertTo(grey, CV_8U, gain, 255 * (1 - gain) + any.uniform(0, 50));
    const double top = any.uniform(200, 250);
    grey.convertTo(grey, CV_8U, 255.0 / top, 0);
    cv::Mat grain(grey.size(), CV_16S), sum;
    any.fill(grain, cv::RNG::NORMAL, 0, any.uniform(0.0, 8.0));
    grey.convertTo(sum, CV_16S);
    sum += grain;
    sum.convertTo(grey, CV_8U);
    return grey;
}

// A stroke of the neighbour, or a little less of the character itself.
void cutBadly(cv::Mat& grey, cv::RNG& any)
{
    if (any.uniform(0, 6) != 0)
        return;
    const int width = any.uniform(1, 2 + grey.cols / 12), top = any.uniform(0, grey.rows / 2);
    const bool left = any.uniform(0, 2) == 0;
    const cv::Rect strip(left ? 0 : grey.cols - width, 0, width, grey.rows);
    if (any.uniform(0, 2) == 0)
        grey(strip).setTo(255);
    else
        grey(cv::Rect(strip.x, top, width, grey.rows / 3)).setTo(any.uniform(0, 120));
}

/// Rows: features of one character.
cv::Mat looksOf(char32_t character, const Faces& faces, int each, cv::RNG& any)
{
    cv::Mat rows;
    for (const auto& face : faces) {
        for (int i = 0; i < each; ++i) {
            const cv::Mat drawn = face->draw(character, any.uniform(20, 60));
            if (drawn.empty())
                break;
            cv::Mat grey = worn(drawn, any);
            cutBadly(grey, any);
            const cv::Mat features = mirvak::glyphFeaturesOf(grey);
            if (!features.empty())
                rows.push_back(features);
        }
    }
    return rows;
}

struct Learnt
{
    cv::Mat within, means; ///< scatter within the characters; their means, row by row
    std::vector<char32_t> characters;
};

Learnt collect(const Faces& faces, unsigned seed)
{
    Learnt learnt;
    learnt.within = cv::Mat::zeros(glyphFeatures, glyphFeatures, CV_32F);
    cv::RNG any(seed);
    double samples = 0;
    for (const char32_t character : commonIdeographs()) {
        cv::Mat rows = looksOf(character, faces, looksEach, any);
        if (rows.rows < 2)
            continue;
        cv::Mat mean;
        cv::reduce(rows, mean, 0, cv::REDUCE_AVG);
        learnt.means.push_back(mean);
        learnt.characters.push_back(character);
        rows -= cv::repeat(mean, rows.rows, 1);
        cv::gemm(rows, rows, 1, learnt.within, 1, learnt.within, cv::GEMM_1_T);
        samples += rows.rows - 1;
    }
    learnt.within /= samples;
    std::printf("%zu characters, %.0f looks\n", learnt.characters.size(), samples);
    return learnt;
}

// Whitens what the fonts differ by, then keeps the directions in which the characters differ most. The last
// row takes the middle of all away.
cv::Mat discriminantsOf(const Learnt& learnt)
{
    cv::Mat values, vectors;
    cv::Mat within = learnt.within.clone();
    within += cv::Mat::eye(within.size(), CV_32F) * (smoothing * cv::trace(within)[0] / within.rows);
    cv::eigen(within, values, vectors);
    for (int i = 0; i < vectors.rows; ++i)
        vectors.row(i) /= std::sqrt(values.at<float>(i));
    cv::Mat middle;
    cv::reduce(learnt.means, middle, 0, cv::REDUCE_AVG);
    const cv::Mat white = (learnt.means - cv::repeat(middle, learnt.means.rows, 1)) * vectors.t();
    cv::Mat between = white.t() * white / white.rows, axes;
    cv::eigen(between, values, axes);
    cv::Mat projection = vectors.t() * axes.rowRange(0, dimensions).t();
    projection.push_back(cv::Mat(-middle * projection));
    return projection;
}

void test(const GlyphBook& book, const std::string& name, unsigned seed)
{
    Faces faces;
    faces.push_back(Face::open(name));
    if (!faces.back())
        return;
    cv::RNG any(seed);
    int all = 0, first = 0, among = 0;
    const std::vector<char32_t> characters = commonIdeographs();
    for (size_t i = 0; i < characters.size(); i += 5) {
        const cv::Mat rows = looksOf(characters[i], faces, 1, any);
        for (int row = 0; row < rows.rows; ++row, ++all) {
            const auto near = book.nearest(book.place(rows.row(row)), 10);
            first += near.front().character == characters[i];
            for (const GlyphBook::Near& one : near)
                among += one.character == characters[i];
        }
    }
    std::printf("%s: of %d first %.2f %%, among ten %.2f %%\n",
                name.c_str(),
                all,
                100.0 * first / all,
                100.0 * among / all);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4)
        return 2;
    const unsigned seed = static_cast<unsigned>(std::atoi(argv[2]));
    Faces faces;
    int at = 3;
    for (; at < argc && std::strcmp(argv[at], "--test") != 0; ++at) {
        faces.push_back(Face::open(argv[at]));
        if (!faces.back())
            return std::fprintf(stderr, "%s: no font\n", argv[at]), 1;
    }
    const Learnt learnt = collect(faces, seed);
    const cv::Mat projection = discriminantsOf(learnt);
    const cv::Mat middle = projection.row(glyphFeatures);
    const cv::Mat means = learnt.means * projection.rowRange(0, glyphFeatures);
    if (!GlyphBook::save(argv[1], projection, means + cv::repeat(middle, means.rows, 1), learnt.characters))
        return std::fprintf(stderr, "%s: cannot be written\n", argv[1]), 1;
    const std::optional<GlyphBook> book = GlyphBook::load(argv[1]);
    for (++at; book && at < argc; ++at)
        test(*book, argv[at], seed + 1);
    return book ? 0 : 1;
}

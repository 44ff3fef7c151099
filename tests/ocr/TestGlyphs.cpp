#include "TestGlyphs.h"

#include "GlyphFeatures.h"

#include <opencv2/imgproc.hpp>

using namespace mirvak;

namespace testGlyphs {

cv::Mat glyphOf(char32_t character, int side, int ink, int weight)
{
    cv::RNG any(static_cast<unsigned>(character) * 77U + 5U);
    cv::Mat large(4 * side, 4 * side, CV_8UC1, cv::Scalar(255));
    const bool isHalved = character % 3 == 0;
    const auto x = [&](double share) {
        if (isHalved)
            share = share < 0.5 ? share * 0.8 : 0.6 + (share - 0.5) * 0.8;
        return cvRound((0.04 + 0.92 * share) * large.cols);
    };
    const auto y = [&](double share) { return cvRound((0.04 + 0.92 * share) * large.rows); };
    for (int i = 0; i < 7; ++i) {
        const double at = any.uniform(0.0, 1.0), from = any.uniform(0.0, 0.4), to = any.uniform(0.6, 1.0);
        const double half = at < 0.5 ? 0 : 0.5; // across, within one half
        if (i % 2 == 0)
            cv::line(large, {x(at), y(from)}, {x(at), y(to)}, ink, 4 * weight * side / glyphSide);
        else
            cv::line(large,
                     {x(half), y(at)},
                     {x(half + 0.49), y(any.uniform(0.0, 1.0))},
                     ink,
                     4 * weight * side / glyphSide);
    }
    cv::line(large, {x(0), y(0)}, {x(0), y(0.3)}, ink, 4 * weight * side / glyphSide);
    cv::line(large, {x(1), y(0.7)}, {x(1), y(1)}, ink, 4 * weight * side / glyphSide);
    cv::Mat glyph;
    cv::resize(large, glyph, {side, side}, 0, 0, cv::INTER_AREA);
    return glyph;
}

Print::Print(const std::u32string& text, int left)
    : picture(lineHeight + 40, left + 60 + pitch * static_cast<int>(text.size()), CV_8UC1, cv::Scalar(255))
{
    int x = left;
    for (const char32_t c : text) {
        cv::Rect box(x + (pitch - glyphSide) / 2, 22, glyphSide, glyphSide);
        if (c == U'。') {
            box = {x + 6, 44, 8, 8};
            cv::circle(picture, {box.x + 4, box.y + 4}, 3, 0, 2);
        } else {
            glyphOf(c).copyTo(picture(box));
        }
        inks.push_back(box);
        x += pitch;
    }
}

std::u32string textOf(std::initializer_list<int> numbers)
{
    std::u32string text;
    for (const int n : numbers)
        text += n < 0 ? U'。' : firstCharacter + static_cast<char32_t>(n);
    return text;
}

GlyphBook bookOf(const std::string& path, double unit)
{
    cv::Mat projection = cv::Mat::eye(glyphFeatures, glyphFeatures, CV_32F) * unit;
    projection.push_back(cv::Mat(1, glyphFeatures, CV_32F, cv::Scalar(0)));
    cv::Mat means;
    std::vector<char32_t> characters;
    for (int i = 0; i < characterCount; ++i) {
        characters.push_back(firstCharacter + static_cast<char32_t>(i));
        means.push_back(cv::Mat(glyphFeaturesOf(glyphOf(characters.back())) * unit));
    }
    EXPECT_TRUE(GlyphBook::save(path, projection, means, characters));
    auto book = GlyphBook::load(path);
    EXPECT_TRUE(book);
    return book ? *book : GlyphBook();
}

} // namespace testGlyphs

#pragma once

#include "GlyphBook.h"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include <filesystem>
#include <string>
#include <vector>

/// Ideographs that no font has, and lines of them.
namespace testGlyphs {

constexpr int pitch = 40, lineHeight = 36, glyphSide = 32;
constexpr char32_t firstCharacter = 0x4e00; // one made glyph for each ideograph from there on
constexpr int characterCount = 40;
constexpr double scale = 40; // of the made book: other characters are as far away as in a learnt one

/// Strokes of a kind that no font has, but always the same ones for the same character; some of them leave a
/// white strip from top to bottom, as between the halves of many ideographs.
cv::Mat glyphOf(char32_t character, int side = glyphSide, int ink = 0, int weight = 2);

/// A line of made glyphs on squares, with full stops where U'。' stands: little ink at the foot, and white.
struct Print
{
    cv::Mat picture;
    std::vector<cv::Rect> inks; ///< of the characters

    explicit Print(const std::u32string& text, int left = 60);
};

/// The characters of these numbers; a full stop for a negative one.
std::u32string textOf(std::initializer_list<int> numbers);

/// A book of the made glyphs: each is its own mean, and nothing is projected.
mirvak::GlyphBook bookOf(const std::string& path, double unit = scale);

class GlyphFiles : public ::testing::Test
{
protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }
    std::string path(const char* name = "made.glyphs") const { return (folder_ / name).string(); }

private:
    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() /
        ("glyphs-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
};

} // namespace testGlyphs

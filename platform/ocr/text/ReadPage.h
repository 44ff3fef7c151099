#pragma once

#include <array>
#include <string>
#include <vector>

namespace mirvak {

/// Pixels; right and bottom lie outside.
struct Box
{
    int left = 0, top = 0, right = 0, bottom = 0;
    int width() const { return right - left; }
    int height() const { return bottom - top; }
};

struct ReadWord
{
    std::string text; ///< UTF-8
    Box box;
    float confidence = 0;  ///< 0 to 100
    int frame = 0;         ///< of ReadPage::frames; of other ones than the first, `box` is that of the area
    Box lying{};           ///< in such a frame: the word's own box
    bool isUnsure = false; ///< more likely wrong than people should have to find out by themselves
};

/// Where a place of one picture lies in another: a homography, row by row, on pixels from the outer corner at
/// the top left.
using Homography = std::array<double, 9>;
constexpr Homography sameFrame{1, 0, 0, 0, 1, 0, 0, 0, 1};

struct ReadLine
{
    std::vector<ReadWord> words; ///< from left to right
    Box box;
};

using ReadBlock = std::vector<ReadLine>; ///< from the top down

/// What was read on a page: words with their places, blocks in reading order.
struct ReadPage
{
    int width = 0, height = 0; ///< px
    double dpi = 0;
    std::string language; ///< of most of the page, as its model is named ("eng", "chi_sim")
    std::vector<ReadBlock> blocks;
    std::vector<Homography> frames{
        sameFrame};                          ///< from what was read to this page: itself, turned parts of it
    Homography toPicture = sameFrame;        ///< from this page to the picture file as seen
    int pictureWidth = 0, pictureHeight = 0; ///< px of that picture
};

} // namespace mirvak

#pragma once

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
    bool isUnsure = false; ///< more likely wrong than people should have to find out by themselves
};

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
};

} // namespace mirvak

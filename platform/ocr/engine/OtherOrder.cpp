#include "OtherOrder.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr double badly = 72;   // percent; pages that are divided well are read with 80 and more
constexpr double guessed = 50; // percent; what is no better is as good as nothing
constexpr double clearly = 1.1;

struct Worth
{
    double letters = 0, confidence = 0, good = 0; ///< good: letters by how sure they are

    void add(const ReadBlock& block)
    {
        for (const ReadLine& line : block) {
            for (const ReadWord& word : line.words) {
                const auto length = static_cast<double>(word.text.size());
                letters += length;
                confidence += length * static_cast<double>(word.confidence);
                good += length * std::max(0.0, static_cast<double>(word.confidence) - guessed);
            }
        }
    }
};

// Lines of one column follow each other downwards; a step up begins the next block.
std::vector<ReadBlock> blocksOf(ReadBlock lines)
{
    std::vector<ReadBlock> blocks;
    for (ReadLine& line : lines) {
        const bool follows = !blocks.empty() && line.box.top >= blocks.back().back().box.top &&
                             line.box.left < blocks.back().back().box.right &&
                             line.box.right > blocks.back().back().box.left;
        if (!follows)
            blocks.emplace_back();
        blocks.back().push_back(std::move(line));
    }
    return blocks;
}

} // namespace

void tryOtherOrder(ReadPage& page, const cv::Mat& grey, TextModel& model, const Limit& limit)
{
    Worth ours, theirs;
    for (const ReadBlock& block : page.blocks)
        ours.add(block);
    if (ours.letters == 0 || ours.confidence > badly * ours.letters)
        return;
    bool late = false;
    ReadBlock lines = model.readPage(grey, nominalDpi, limit, late);
    theirs.add(lines);
    if (!late && theirs.good > clearly * ours.good)
        page.blocks = blocksOf(std::move(lines));
}

} // namespace mirvak

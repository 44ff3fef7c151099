#include "CodeReader.h"

#include "CodeSearch.h"
#include "FullAscii39.h"
#include "PayloadText.h"
#include "ReadingOrder.h"

#include <algorithm>
#include <array>

namespace mirvak {

namespace {

constexpr std::size_t pixelsAtLeast = 4'000'000; // views of a small picture may be larger than it

std::string textOf(const Sighting& seen)
{
    const std::string text = payloadText(seen.bytes, seen.isText);
    return seen.symbology == Symbology::code39 ? fullAscii39(text) : text;
}

} // namespace

std::vector<Code> CodeReader::read(const cv::Mat& rgb, const CodeWatch& goesOn) const
{
    if (rgb.cols < 8 || rgb.rows < 8)
        return {};
    const GreyFrame frame(rgb);
    DecoderPool pool(helper_, std::max(rgb.total(), pixelsAtLeast));
    CodeSearch search(frame, pool);
    using Pass = void (CodeSearch::*)();
    const std::array<Pass, 5> passes{&CodeSearch::lookAtWhole,
                                     &CodeSearch::lookAtCandidates,
                                     &CodeSearch::lookHarder,
                                     &CodeSearch::lookAgain,
                                     &CodeSearch::confirmWeakOnes};
    size_t done = 0;
    double reached = 0; // a view whose helper died is done once more
    const auto watch = [&](double share) {
        reached = std::max(reached, (static_cast<double>(done) + share) / passes.size());
        return !goesOn || goesOn(reached);
    };
    pool.setWatch(watch);
    for (; watch(0) && done < passes.size(); ++done)
        (search.*passes[done])();
    std::vector<Code> codes;
    for (const SeenCode& seen : search.sightings().credible())
        codes.push_back({textOf(seen.best), seen.best.symbology, seen.best.box});
    sortForReading(codes);
    return codes;
}

} // namespace mirvak

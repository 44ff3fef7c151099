#include "CodeReader.h"

#include "CodeSearch.h"
#include "PayloadText.h"
#include "ReadingOrder.h"

namespace mirvak {

namespace {

constexpr std::size_t pixelsAtLeast = 4'000'000; // views of a small picture may be larger than it

} // namespace

std::vector<Code> CodeReader::read(const cv::Mat& rgb) const
{
    if (rgb.cols < 8 || rgb.rows < 8)
        return {};
    const GreyFrame frame(rgb);
    DecoderPool pool(helper_, std::max(rgb.total(), pixelsAtLeast));
    CodeSearch search(frame, pool);
    search.lookAtWhole();
    search.lookAtCandidates();
    search.lookHarder();
    search.lookAgain();
    search.confirmWeakOnes();
    std::vector<Code> codes;
    for (const SeenCode& seen : search.sightings().credible())
        codes.push_back({payloadText(seen.best.bytes, seen.best.isText), seen.best.symbology, seen.best.box});
    sortForReading(codes);
    return codes;
}

} // namespace mirvak

#include "Sightings.h"

#include "CodeRules.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <iterator>
#include <tuple>

namespace mirvak {

namespace {

// The check digit of trade numbers is right in every tenth misreading, and a blurred picture misleads a
// decoder in the same way again and again: the other one has to agree, or very many views.
constexpr size_t passesOfOneDecoder = 5;
constexpr size_t shareOfRival = 3; // one reading in so many may be wrong

bool haveCommonHome(const Sighting& a, const Sighting& b)
{
    return std::find_first_of(a.homes.begin(), a.homes.end(), b.homes.begin(), b.homes.end()) !=
           a.homes.end();
}

// Decoders tell of bars only where scan lines met them, which may be a spot...
bool isSpotOf(const Sighting& a, const Sighting& b)
{
    const float smaller = std::min(a.box.area(), b.box.area()), larger = std::max(a.box.area(), b.box.area());
    return smaller < 0.25F * larger;
}

// ... or two strips of the same bars, with some between them that nothing could read. Two labels are farther
// apart.
bool areStripsOfOne(const Sighting& a, const Sighting& b)
{
    const cv::Rect2f around = a.box | b.box;
    const float across = std::min(around.width, around.height);
    const float covered =
        around.width > around.height ? a.box.height + b.box.height : a.box.width + b.box.width;
    const float length = std::min(std::max(a.box.width, a.box.height), std::max(b.box.width, b.box.height));
    return isLinear(a.symbology) && 2 * (across - covered) < covered && 2 * covered < length;
}

// Two of five is read out of the middle of a longer number, too; where it lies is then known roughly.
bool isPieceOf(const SeenCode& longer, const SeenCode& shorter)
{
    if (shorter.best.symbology != Symbology::itf || longer.best.symbology != Symbology::itf ||
        longer.best.bytes.size() <= shorter.best.bytes.size() ||
        longer.best.bytes.find(shorter.best.bytes) == std::string::npos)
        return false;
    cv::Rect2f around = longer.best.box;
    const float margin = std::max(around.width, around.height) / 2;
    around += cv::Size2f(2 * margin, 2 * margin);
    around -= cv::Point2f(margin, margin);
    return (around & shorter.best.box).area() > 0;
}

// Whether b lies on much of a's place, so that both cannot be there.
bool contradict(const SeenCode& a, const SeenCode& b)
{
    const float common = (a.best.box & b.best.box).area();
    return common > 0.3F * std::min(a.best.box.area(), b.best.box.area());
}

// Readings have even numbers by the one and odd ones by the other decoder.
bool isByBothDecoders(const std::set<int>& passes)
{
    return std::any_of(passes.begin(), passes.end(), [](int pass) { return pass % 2 == 0; }) &&
           std::any_of(passes.begin(), passes.end(), [](int pass) { return pass % 2 == 1; });
}

// How well founded a code is: what corrects its own errors before bars, what both decoders read before what
// one does, which repeats its error in view after view; then by the number of readings.
auto weight(const SeenCode& code)
{
    return std::make_tuple(!isLinear(code.best.symbology),
                           isByBothDecoders(code.passes),
                           code.passes.size(),
                           code.lines,
                           code.best.bytes.size());
}

// Another trade number there, of which the other decoder speaks.
bool isOthersNumber(const SeenCode& code, const SeenCode& rival)
{
    std::set<int> both = code.passes;
    both.insert(rival.passes.begin(), rival.passes.end());
    return isGtin(code.best.symbology) && isGtin(rival.best.symbology) && isByBothDecoders(both) &&
           contradict(code, rival);
}

// The halves of a longer trade number are each read as a UPC-E, which has nothing in its middle to tell.
bool areHalves(const SeenCode& code, const SeenCode& rival)
{
    return code.best.symbology == Symbology::upce && rival.best.symbology == Symbology::upce &&
           haveCommonHome(code.best, rival.best);
}

// One decoder alone reads these bars now as this and now as that: neither can be believed.
bool isReadOtherwise(const SeenCode& code, const SeenCode& rival)
{
    return code.best.symbology == rival.best.symbology && code.best.bytes.size() == rival.best.bytes.size() &&
           rival.passes.size() * shareOfRival >= code.passes.size() && contradict(code, rival);
}

bool isContested(const SeenCode& code, const SeenCode& rival)
{
    return isLinear(code.best.symbology) && !isByBothDecoders(code.passes) &&
           code.best.bytes != rival.best.bytes &&
           (isReadOtherwise(code, rival) || isOthersNumber(code, rival) || areHalves(code, rival));
}

} // namespace

bool SeenCode::isCredible() const
{
    const bool byBoth = isByBothDecoders(passes);
    if (isGtin(best.symbology) && !byBoth && passes.size() < passesOfOneDecoder)
        return false;
    const int views = static_cast<int>(passes.size()), needed = passesNeeded(best.symbology);
    // Few lines are made up for by more views: of one decoder, which errs in all of them alike, only where
    // the code tests itself.
    const bool isFounded =
        lines >= linesNeeded(best.symbology) || (views > needed && (byBoth || testsItself(best.symbology)));
    return isFounded && views >= needed && isPlausible(best.symbology, best.bytes);
}

bool Sightings::isSameCode(const Sighting& a, const Sighting& b) const
{
    if (a.symbology != b.symbology || a.bytes != b.bytes)
        return false;
    if ((a.box & b.box).area() > 0)
        return true;
    return haveCommonHome(a, b) &&
           (isSpotOf(a, b) || areStripsOfOne(a, b) || (isLinear(a.symbology) && goesOn_ && goesOn_(a, b)));
}

// Boxes that have grown may meet.
void Sightings::joinTouching(std::vector<SeenCode>& codes) const
{
    for (size_t i = 0; i < codes.size(); ++i) {
        for (size_t j = codes.size() - 1; j > i; --j) {
            if (!isSameCode(codes[i].best, codes[j].best))
                continue;
            codes[i].passes.insert(codes[j].passes.begin(), codes[j].passes.end());
            codes[i].lines = std::max(codes[i].lines, codes[j].lines);
            codes.erase(codes.begin() + static_cast<std::ptrdiff_t>(j));
        }
    }
}

std::vector<SeenCode> Sightings::codes() const
{
    // Those of parts first: a reading of the whole frame may stretch over two labels with the same text, and
    // then speaks for both.
    std::vector<Sighting> ordered = all_;
    std::stable_partition(ordered.begin(), ordered.end(), [](const Sighting& seen) { return seen.ofPart; });
    std::vector<SeenCode> result;
    for (const Sighting& sighting : ordered) {
        bool isKnown = false;
        for (SeenCode& code : result) {
            if (!isSameCode(code.best, sighting))
                continue;
            isKnown = true;
            code.passes.insert(sighting.pass);
            code.lines = std::max(code.lines, sighting.lines);
            if (sighting.ofPart)
                code.best.box |= sighting.box;
        }
        if (!isKnown)
            result.push_back({sighting, {sighting.pass}, sighting.lines});
    }
    joinTouching(result);
    return result;
}

std::vector<SeenCode> Sightings::credible() const
{
    const std::vector<SeenCode> every = codes();
    std::vector<SeenCode> seen;
    std::copy_if(every.begin(), every.end(), std::back_inserter(seen), [&](const SeenCode& code) {
        return code.isCredible() && std::none_of(every.begin(), every.end(), [&](const SeenCode& rival) {
                   return isContested(code, rival);
               });
    });
    const std::vector<SeenCode> all = seen;
    seen.erase(std::remove_if(seen.begin(),
                              seen.end(),
                              [&](const SeenCode& code) {
                                  return std::any_of(all.begin(), all.end(), [&](const SeenCode& longer) {
                                      return isPieceOf(longer, code);
                                  });
                              }),
               seen.end());
    std::stable_sort(
        seen.begin(), seen.end(), [](const SeenCode& a, const SeenCode& b) { return weight(a) > weight(b); });
    std::vector<SeenCode> result;
    for (const SeenCode& code : seen) {
        if (std::none_of(result.begin(), result.end(), [&](const SeenCode& better) {
                return contradict(better, code);
            }))
            result.push_back(code);
    }
    return result;
}

} // namespace mirvak

// Learns the weights by which outlines are judged, from scenes of which the corners are known.
//   learn_outline FILE [SCENES [SEED [sheets]]]   writes PageWeights.h to FILE, with `sheets`
//   OutlineWeights.h, which knows nothing of the map; SCENES of each kind of desk
// The likelihood that the right outlines, or none where none is to be found, have among all of a scene is
// made most by Adam (Kingma and Ba 2015), with a small price on large weights. Each fifth scene is kept aside
// and judged at the end.
#include "EdgeField.h"
#include "LineFinder.h"
#include "OutlineScenes.h"
#include "PlainScenes.h"
#include "QuadFinder.h"
#include "QuadOverlap.h"
#include "SheetEvidence.h"
#include "SmallLook.h"

#include <QGuiApplication>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace {

/// Either mirvak::PageEvidence or mirvak::Evidence.
using Evidence = std::vector<double>;

constexpr size_t units = 12;
constexpr double goodOverlap = 0.93; // in the small picture; the full one places the sides more finely
constexpr int rounds = 1000;
constexpr double price = 0.0003;
constexpr size_t mostLines = 72;
const cv::Size frame(1280, 960);
using Weights = std::vector<double>;

struct Example
{
    std::vector<Evidence> evidence;
    std::vector<bool> isGood;
    bool hasGood() const { return std::find(isGood.begin(), isGood.end(), true) != isGood.end(); }
};

template <class Rows> void keep(const Rows& rows, std::vector<Evidence>& evidence)
{
    for (const auto& row : rows)
        evidence.emplace_back(row.begin(), row.end());
}

/// @param mapped  what the map sees: the picture, or another one that misleads
Example
exampleOf(const cv::Mat& picture, const std::optional<Corners>& sheet, bool withMap, const cv::Mat& mapped)
{
    static mirvak::SmallLook look;
    static mirvak::EdgeField edges;
    static mirvak::RegionField regions;
    static mirvak::LineFinder lines;
    static mirvak::QuadFinder quads;
    static mirvak::SheetMap map;
    static mirvak::DeskColours desk;
    static std::vector<mirvak::Evidence> evidence;
    static std::vector<mirvak::PageEvidence> pageEvidence;
    map.build(look.build(mapped));
    const auto& planes = look.build(picture);
    const mirvak::SheetMap* shown = withMap ? &map : nullptr;
    edges.build(planes, withMap ? map.quiet() : cv::Mat(), map.cell());
    regions.build(planes, edges.change());
    quads.find(lines.find(edges, planes, regions, mostLines, shown),
               look.reduction().size(),
               mirvak::QuadFinder::Search::page,
               shown);
    if (withMap)
        mirvak::addFromMap(map, edges, planes, quads);
    desk.learn(planes);
    Example example;
    mirvak::gatherEvidence(quads.quads(), planes, regions, desk, evidence);
    mirvak::gatherPageEvidence(quads.quads(), map, evidence, pageEvidence);
    if (withMap)
        keep(pageEvidence, example.evidence);
    else
        keep(evidence, example.evidence);
    for (const auto& quad : quads.quads()) {
        Corners corners = mirvak::snapSides(edges, quad.corners);
        for (cv::Point2d& corner : corners)
            corner = look.reduction().toFull(corner);
        example.isGood.push_back(sheet && mirvak::overlapOf(corners, *sheet) > goodOverlap);
    }
    return example;
}

std::vector<Example> makeExamples(unsigned count, unsigned seed, bool withMap)
{
    constexpr int plainDesks = 6, misledEach = 12;
    std::vector<Example> examples;
    cv::Mat before;
    // There are sheets and desks of which the map has learnt nothing. Now and then it is that of the scene
    // before, so that it is not believed blindly (modality dropout: Neverova and others 2016).
    const auto add = [&](const cv::Mat& picture, const std::optional<Corners>& sheet) {
        const bool isMisled = examples.size() % misledEach == misledEach - 1;
        examples.push_back(exampleOf(picture, sheet, withMap, isMisled ? before : picture));
        before = picture;
    };
    for (unsigned i = seed; i < seed + count; ++i) {
        for (size_t desk = 0; desk < desktops::names.size(); ++desk) {
            const auto kind = static_cast<desktops::Kind>(desk);
            const OutlineScene scene = makeOutlineScene(kind, frame, i);
            add(scene.picture, scene.sheet);
            if (i % 2 == 0)
                add(makeEmptyDesk(kind, frame, i), {});
        }
        for (int desk = 0; desk < plainDesks; ++desk) {
            const PlainScene scene = makePlainScene(static_cast<made::Desk>(desk), frame, i);
            add(scene.picture, scene.sheet);
        }
    }
    return examples;
}

double scoreOf(const Weights& weights, const Evidence& evidence, std::array<double, units>& hidden)
{
    const size_t count = evidence.size(), sums = units * count;
    double score = weights.back();
    for (size_t unit = 0; unit < units; ++unit) {
        double sum = 0;
        for (size_t i = 0; i < count; ++i)
            sum += weights[unit * count + i] * evidence[i];
        hidden[unit] = std::tanh(sum);
        score += weights[sums + unit] * hidden[unit];
    }
    return score;
}

/// Adds the slope of the scene's negative log likelihood. @return that itself
double addSlope(const Example& example, const Weights& weights, Weights& slope)
{
    const size_t count = example.evidence.size();
    std::vector<double> shares(count);
    std::vector<std::array<double, units>> hidden(count);
    double all = 1, good = 0;
    for (size_t i = 0; i < count; ++i) {
        shares[i] = std::exp(scoreOf(weights, example.evidence[i], hidden[i]));
        all += shares[i];
        good += example.isGood[i] ? shares[i] : 0;
    }
    const bool hasGood = example.hasGood();
    for (size_t i = 0; i < count; ++i) {
        const double wanted = hasGood && example.isGood[i] ? shares[i] / good : 0;
        const double error = shares[i] / all - wanted;
        slope.back() += error;
        for (size_t unit = 0; unit < units; ++unit) {
            const double h = hidden[i][unit];
            const size_t facts = example.evidence[i].size(), sums = units * facts;
            slope[sums + unit] += error * h;
            const double inner = error * weights[sums + unit] * (1 - h * h);
            for (size_t k = 0; k < facts; ++k)
                slope[unit * facts + k] += inner * example.evidence[i][k];
        }
    }
    return std::log(all / (hasGood ? good : 1));
}

Weights learn(const std::vector<Example>& examples, size_t facts)
{
    const size_t weightCount = units * facts + units + 1;
    Weights weights(weightCount), mean(weightCount), square(weightCount), slope(weightCount);
    cv::RNG random(1);
    for (size_t i = 0; i + 1 < weightCount; ++i)
        weights[i] = random.gaussian(0.4);
    for (int round = 0; round < rounds; ++round) {
        std::fill(slope.begin(), slope.end(), 0);
        double loss = 0;
        for (size_t i = 0; i < examples.size(); ++i)
            loss += i % 5 ? addSlope(examples[i], weights, slope) : 0;
        const double step = round < rounds / 2 ? 0.03 : round < rounds * 3 / 4 ? 0.01 : 0.003;
        const double used = 0.8 * static_cast<double>(examples.size());
        for (size_t i = 0; i < weightCount; ++i) {
            const double down = slope[i] / used + price * weights[i];
            mean[i] = 0.9 * mean[i] + 0.1 * down;
            square[i] = 0.999 * square[i] + 0.001 * down * down;
            weights[i] -= step * mean[i] / (1 - std::pow(0.9, round + 1)) /
                          (std::sqrt(square[i] / (1 - std::pow(0.999, round + 1))) + 1e-8);
        }
        if (round % 100 == 99)
            std::printf("round %d: loss %.4f\n", round + 1, loss / used);
    }
    return weights;
}

void report(const std::vector<Example>& examples, const Weights& weights)
{
    int possible = 0, right = 0, wrong = 0;
    std::array<double, units> hidden{};
    for (size_t i = 0; i < examples.size(); i += 5) {
        double most = 0;
        std::optional<bool> answer;
        for (size_t k = 0; k < examples[i].evidence.size(); ++k) {
            const double score = scoreOf(weights, examples[i].evidence[k], hidden);
            if (score > most) {
                most = score;
                answer = examples[i].isGood[k];
            }
        }
        possible += examples[i].hasGood() ? 1 : 0;
        right += answer && *answer ? 1 : 0;
        wrong += answer && !*answer ? 1 : 0;
    }
    std::printf("kept aside: of %d that could be found %d right, %d answers wrong\n", possible, right, wrong);
}

void writeRow(std::FILE* file, const double* weights, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        std::fprintf(file, "%s%.4fF", i ? ", " : "", weights[i]);
}

bool write(const char* path, const Weights& weights, const std::string& arguments, bool withMap)
{
    std::FILE* file = std::fopen(path, "w");
    if (!file)
        return false;
    const char* name = withMap ? "page" : "outline";
    const char* count = withMap ? "pageEvidenceCount" : "evidenceCount";
    const size_t facts = withMap ? mirvak::pageEvidenceCount : mirvak::evidenceCount;
    std::fprintf(
        file,
        "#pragma once\n\n#include \"SheetEvidence.h\"\n\n#include <array>\n\nnamespace mirvak {\n\n"
        "// Learnt by `learn_outline FILE %s` in benchmarks/outline: a row of weights of the evidence for "
        "each unit of\n// the hidden layer, then what each unit adds to the score. Not to be changed by "
        "hand.\nconstexpr size_t %sUnits = %zu;\nconstexpr "
        "std::array<std::array<float, %s>, %sUnits> %sWeights{{\n",
        arguments.c_str(),
        name,
        units,
        count,
        name,
        name);
    for (size_t unit = 0; unit < units; ++unit) {
        std::fputs("    {", file);
        writeRow(file, &weights[unit * facts], facts);
        std::fputs("},\n", file);
    }
    std::fprintf(file, "}};\nconstexpr std::array<float, %sUnits> %sSum{", name, name);
    writeRow(file, &weights[units * facts], units);
    std::fprintf(
        file, "};\nconstexpr float %sBias = %.4fF;\n\n} // namespace mirvak\n", name, weights.back());
    return std::fclose(file) == 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("learn_outline FILE [SCENES [SEED [sheets]]]\n", stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    cv::setNumThreads(1);
    const unsigned scenes = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 100;
    const unsigned seed = argc > 3 ? static_cast<unsigned>(std::atoi(argv[3])) : 1000;
    const bool withMap = argc < 5;
    const std::vector<Example> examples = makeExamples(scenes, seed, withMap);
    const Weights weights = learn(examples, withMap ? mirvak::pageEvidenceCount : mirvak::evidenceCount);
    report(examples, weights);
    const std::string arguments =
        std::to_string(scenes) + " " + std::to_string(seed) + (withMap ? "" : " sheets");
    return write(argv[1], weights, arguments, withMap) ? 0 : 1;
}

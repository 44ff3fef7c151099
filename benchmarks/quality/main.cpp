// How good the pages are: every operation on pages of which everything is known, beside what people use
// instead.
//   bench_quality [PAGES [SEED [FOLDER]]]        FOLDER receives before, after and the truth, side by side
//   bench_quality --ours [PAGES [SEED [FOLDER]]] without the others, which take most of the time
//   bench_quality --photos FOLDER PHOTOGRAPH...  FOLDER receives each before and after every operation
// ImageMagick and unpaper are measured where they are installed.
#include "Commands.h"
#include "Rivals.h"
#include "Scenes.h"
#include "Similarity.h"
#include "SkewTable.h"

#include "Background.h"
#include "Codec.h"
#include "Deskew.h"
#include "Enhance.h"
#include "Seal.h"
#include "Threshold.h"

#include <QGuiApplication>

#include <opencv2/imgproc.hpp>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

Operation ours(void (*change)(mirvak::Image&))
{
    return [change](const cv::Mat& rgb) {
        mirvak::Image image;
        image.pixels = rgb.clone();
        change(image);
        return image.pixels;
    };
}

cv::Mat greyOf(const cv::Mat& picture)
{
    cv::Mat grey = picture;
    if (picture.channels() == 3)
        cv::cvtColor(picture, grey, cv::COLOR_RGB2GRAY);
    return grey;
}

double share(const cv::Mat& part, const cv::Mat& of)
{
    return double(cv::countNonZero(part & of)) / std::max(1, cv::countNonZero(of));
}

struct Score
{
    double recall, precision;
    double f() const { return 2 * recall * precision / std::max(1e-9, recall + precision); }
};

/// Of black strokes, where the page is paper or ink: areas of colour are a matter of taste.
Score strokes(const Scene& scene, const cv::Mat& black)
{
    cv::Mat edge, judged;
    cv::dilate(scene.ink, edge, cv::Mat(), {-1, -1}, 5);
    judged = edge | scene.paper;
    return {share(black, scene.ink), share(scene.ink, black & judged)};
}

double likeness(const cv::Mat& a8, const cv::Mat& b8)
{
    cv::Mat a, b;
    greyOf(a8).convertTo(a, CV_32F);
    greyOf(b8).convertTo(b, CV_32F);
    return ssim(a, b);
}

/// Mean distance of colours (CIE 1976) where `where` is set.
double labDistance(const cv::Mat& a8, const cv::Mat& b8, const cv::Mat& where)
{
    cv::Mat a, b, sum;
    a8.convertTo(a, CV_32F, 1.0 / 255);
    b8.convertTo(b, CV_32F, 1.0 / 255);
    cv::cvtColor(a, a, cv::COLOR_RGB2Lab);
    cv::cvtColor(b, b, cv::COLOR_RGB2Lab);
    a -= b;
    cv::transform(a.mul(a), sum, cv::Matx13f(1, 1, 1));
    cv::sqrt(sum, sum);
    return cv::mean(sum, where)[0];
}

struct Column
{
    const char* name;
    std::function<double(const Scene&, const cv::Mat&)> measure;
};

struct Table
{
    const char* title;
    std::vector<std::pair<const char*, Operation>> rows;
    std::vector<Column> columns;
};

std::vector<Table> pageTables()
{
    const auto f = [](const Scene& s, const cv::Mat& p) { return strokes(s, greyOf(p) < 128).f(); };
    const std::vector<Column> page = {
        {"white paper", [](const Scene& s, const cv::Mat& p) { return share(greyOf(p) >= 250, s.paper); }},
        {"ink kept", [](const Scene& s, const cv::Mat& p) { return share(greyOf(p) < 200, s.ink); }},
        {"F at 128", [](const Scene& s, const cv::Mat& p) { return strokes(s, greyOf(p) < 128).f(); }},
        {"F at 160", [](const Scene& s, const cv::Mat& p) { return strokes(s, greyOf(p) < 160).f(); }},
        {"F at half", [](const Scene& s, const cv::Mat& p) { return strokes(s, greyOf(p) < s.half).f(); }},
        {"SSIM", [](const Scene& s, const cv::Mat& p) { return likeness(s.truth, p); }}};
    return {
        {"black and white",
         {{"ours", ours(mirvak::threshold)},
          {"OpenCV Otsu", rivals::otsu},
          {"OpenCV adaptive", rivals::adaptive},
          {"Leptonica Sauvola", rivals::sauvola},
          {"Leptonica normalised Otsu", rivals::normalisedOtsu},
          {"ImageMagick -lat", installed("convert", rivals::imageMagickLat)},
          {"unpaper", installed("unpaper", rivals::unpaperBlack)}},
         {{"recall", [](const Scene& s, const cv::Mat& p) { return strokes(s, greyOf(p) < 128).recall; }},
          {"precision",
           [](const Scene& s, const cv::Mat& p) { return strokes(s, greyOf(p) < 128).precision; }},
          {"F", f},
          {"white paper", [](const Scene& s, const cv::Mat& p) { return share(greyOf(p) > 128, s.paper); }}}},
        {"background removed",
         {{"ours", ours(mirvak::removeBackground)},
          {"ours, document", ours(mirvak::processDocument)},
          {"Leptonica normalised", rivals::normalised},
          {"division", rivals::division},
          {"unpaper", installed("unpaper", rivals::unpaperColour)}},
         page},
        {"colours enhanced",
         {{"ours", ours(mirvak::enhanceColour)},
          {"division", rivals::division},
          {"Leptonica normalised", rivals::normalised},
          {"grey world", rivals::greyWorld}},
         {{"all", [](const Scene& s, const cv::Mat& p) { return labDistance(s.truth, p, {}); }},
          {"paper", [](const Scene& s, const cv::Mat& p) { return labDistance(s.truth, p, s.paper); }},
          {"print", [](const Scene& s, const cv::Mat& p) { return labDistance(s.truth, p, s.print); }}}}};
}

/// How much a colour stands out of grey, levels.
cv::Mat chroma(const cv::Mat& rgb)
{
    std::vector<cv::Mat> channels;
    cv::split(rgb, channels);
    return cv::max(cv::max(channels[0], channels[1]), channels[2]) -
           cv::min(cv::min(channels[0], channels[1]), channels[2]);
}

/// A seal is kept where it is coloured, text where nothing is bright.
Table sealTable(bool isBlue)
{
    const auto black = [](const cv::Mat& p) {
        std::vector<cv::Mat> channels;
        cv::split(p, channels);
        return cv::Mat(cv::max(cv::max(channels[0], channels[1]), channels[2]) < 128);
    };
    return {isBlue ? "blue seals" : "red seals",
            {{"ours",
              [isBlue](const cv::Mat& rgb) {
                  mirvak::Image image;
                  image.pixels = rgb.clone();
                  strengthenSeal(image, isBlue ? mirvak::SealColour::blue : mirvak::SealColour::red);
                  return image.pixels;
              }},
             {"division", rivals::division},
             {"Leptonica normalised", rivals::normalised},
             {"unchanged", [](const cv::Mat& rgb) { return rgb.clone(); }}},
            {{"seal kept", [](const Scene& s, const cv::Mat& p) { return share(chroma(p) > 80, s.seal); }},
             {"text kept", [=](const Scene& s, const cv::Mat& p) { return share(black(p), s.ink); }},
             {"crossing", [=](const Scene& s, const cv::Mat& p) { return share(black(p), s.crossing); }},
             {"false", [](const Scene& s, const cv::Mat& p) { return share(chroma(p) > 40, s.bare); }},
             {"white paper",
              [](const Scene& s, const cv::Mat& p) { return share(greyOf(p) >= 250, s.paper & s.bare); }}}};
}

void keep(
    const std::string& folder, const Scene& scene, size_t number, const char* operation, const cv::Mat& page)
{
    cv::Mat shown = page, both;
    if (page.channels() == 1)
        cv::cvtColor(page, shown, cv::COLOR_GRAY2RGB);
    cv::hconcat(std::vector<cv::Mat>{scene.photo, shown, scene.truth}, both);
    mirvak::Image image;
    image.pixels = both;
    mirvak::writeImage(folder + '/' + std::to_string(number) + '-' + operation + ".jpg", image, 90);
}

/// Of this process and of the programs that it has run: others on the machine do not count.
double processorSeconds()
{
    double sum = 0;
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage used{};
        getrusage(who, &used);
        for (const timeval& part : {used.ru_utime, used.ru_stime})
            sum += double(part.tv_sec) + double(part.tv_usec) * 1e-6;
    }
    return sum;
}

void printCopy(const std::vector<Scene>& scenes)
{
    double seconds = 0, megapixels = 0;
    for (const Scene& scene : scenes) {
        const double begin = processorSeconds();
        const cv::Mat copy = scene.photo.clone();
        seconds += processorSeconds() - begin;
        megapixels += double(copy.total()) / 1e6;
    }
    std::printf("plain copy: %.1f ms/MP\n", 1000 * seconds / megapixels);
}

/// What the page itself would get: edges of true strokes are grey, too, and pale print is pale.
void printTruth(const Table& table, const std::vector<Scene>& scenes)
{
    std::printf("  %-26s", "the page itself");
    for (const Column& column : table.columns) {
        double sum = 0;
        for (const Scene& scene : scenes)
            sum += column.measure(scene, scene.truth);
        std::printf("%12.4f", sum / double(scenes.size()));
    }
    std::printf("\n");
}

Table oursOf(Table table)
{
    const auto isOther = [](const auto& row) { return std::string(row.first).rfind("ours", 0) != 0; };
    table.rows.erase(std::remove_if(table.rows.begin(), table.rows.end(), isOther), table.rows.end());
    return table;
}

void print(const Table& table, const std::vector<Scene>& scenes, const std::string& folder)
{
    std::printf("\n%-28s", table.title);
    for (const Column& column : table.columns)
        std::printf("%12s", column.name);
    std::printf("%12s\n", "ms/MP");
    for (const auto& [name, operation] : table.rows) {
        if (!operation) {
            std::printf("  %-26snot installed\n", name);
            continue;
        }
        std::vector<std::vector<double>> values(table.columns.size());
        double seconds = 0, megapixels = 0;
        for (size_t i = 0; i < scenes.size(); ++i) {
            const double begin = processorSeconds();
            const cv::Mat page = operation(scenes[i].photo);
            seconds += processorSeconds() - begin;
            megapixels += double(page.total()) / 1e6;
            for (size_t c = 0; c < values.size(); ++c)
                values[c].push_back(table.columns[c].measure(scenes[i], page));
            if (!folder.empty() && &name == &table.rows.front().first)
                keep(folder, scenes[i], i, table.title, page);
        }
        std::printf("  %-26s", name);
        for (const auto& column : values)
            std::printf("%12.4f", cv::mean(cv::Mat(column))[0]);
        std::printf("%12.1f\n", 1000 * seconds / megapixels);
    }
    if (scenes.front().seal.empty())
        printTruth(table, scenes);
}

/// Photographs of which nothing is known, to be looked at.
int showPhotos(const std::string& folder, const std::vector<std::string>& photos)
{
    using Change = void (*)(mirvak::Image&);
    const std::pair<const char*, Change> operations[] = {{"black", mirvak::threshold},
                                                         {"background", mirvak::removeBackground},
                                                         {"document", mirvak::processDocument},
                                                         {"enhanced", mirvak::enhanceColour}};
    for (size_t i = 0; i < photos.size(); ++i) {
        auto photo = mirvak::readImage(photos[i]);
        if (!photo) {
            std::fprintf(stderr, "%s: no picture\n", photos[i].c_str());
            return 1;
        }
        mirvak::deskew(*photo, 0);
        for (const auto& [name, change] : operations) {
            mirvak::Image both = *photo;
            both.pixels = photo->pixels.clone();
            change(both);
            cv::hconcat(photo->pixels, both.pixels, both.pixels);
            mirvak::writeImage(folder + "/photo-" + std::to_string(i) + '-' + name + ".jpg", both, 90);
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    cv::setNumThreads(1);
    if (argc > 2 && std::string(argv[1]) == "--photos")
        return showPhotos(argv[2], {argv + 3, argv + argc});
    const bool isOursOnly = argc > 1 && std::string(argv[1]) == "--ours";
    argv += isOursOnly ? 1 : 0;
    argc -= isOursOnly ? 1 : 0;
    const int pages = argc > 1 ? std::atoi(argv[1]) : 8;
    const unsigned seed = argc > 2 ? unsigned(std::atoi(argv[2])) : 1;
    const std::string folder = argc > 3 ? argv[3] : "";
    setvbuf(stdout, nullptr, _IOLBF, 0);
    const auto show = [&](const Table& table, const std::vector<Scene>& scenes) {
        print(isOursOnly ? oursOf(table) : table, scenes, folder);
    };
    {
        const std::vector<Scene> scenes = makeScenes(pages, {1836, 2448}, seed);
        printCopy(scenes);
        for (const Table& table : pageTables())
            show(table, scenes);
    }
    for (const bool isBlue : {false, true})
        show(sealTable(isBlue), makeSealedScenes(pages, {1836, 2448}, seed, isBlue));
    if (!isOursOnly)
        printSkew(pages, seed);
    return 0;
}

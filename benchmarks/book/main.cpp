// How flat the pages of a book become: on made spreads of which everything is known, beside a crop by the
// true corners and Leptonica's dewarping of it.
//   bench_book [--no-text] [SCENES [SEED [FOLDER]]]
//     FOLDER receives photograph, ours and the true pages, side by side; --no-text: nothing is read, which
//     takes most of the time
//   bench_book --photos FOLDER OUT        photographs before and after, to be looked at
#include "Measures.h"
#include "Rivals.h"

#include "Codec.h"
#include "Image.h"
#include "mirvakcamera.h"

#include <QDir>
#include <QGuiApplication>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <malloc.h>
#include <map>
#include <sstream>

using deskpictures::Spread;
using deskpictures::SpreadPage;

namespace {

constexpr int doublePage = 2, singlePage = 1;
const cv::Size photoPx(2592, 1944), largePx(3264, 2448);

double cpuSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

/// A line of /proc/self/status in bytes.
double memory(const char* name)
{
    std::ifstream file("/proc/self/status");
    for (std::string line; std::getline(file, line);)
        if (line.rfind(name, 0) == 0)
            return 1024 * std::stod(line.substr(line.find(':') + 1));
    return 0;
}

struct Pages
{
    int code = 0;
    cv::Mat left, right;
    double seconds = 0;       ///< of computing
    double bytesPerPixel = 0; ///< at the worst moment, beyond the photograph
};

/// What the program does with a frame.
Pages flatten(const cv::Mat& photo, bool removeFinger, int pageMode)
{
    static MirvakCamera camera;
    mirvak::Image frame;
    frame.pixels = photo.clone();
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak begins anew
    const double before = memory("VmRSS");
    void* left = nullptr;
    void* right = nullptr;
    Pages pages;
    const double begin = cpuSeconds();
    pages.code = camera.MirvakImage_BookFlat(&frame, removeFinger, pageMode, left, right);
    pages.seconds = cpuSeconds() - begin;
    pages.bytesPerPixel = (memory("VmHWM") - before) / double(photo.total());
    for (auto [handle, mat] : {std::pair(left, &pages.left), std::pair(right, &pages.right)})
        if (handle) {
            *mat = static_cast<mirvak::Image*>(handle)->pixels.clone();
            camera.MirvakImage_Release(handle);
        }
    return pages;
}

/// Of one picture, by a map that turns it a little; bicubic.
double plainRemapSeconds(const cv::Mat& photo)
{
    cv::Mat map(photo.size(), CV_32FC2), result;
    map.forEach<cv::Point2f>([](cv::Point2f& p, const int* at) {
        p = {0.999F * float(at[1]) + 0.02F * float(at[0]), 0.999F * float(at[0]) - 0.02F * float(at[1]) + 40};
    });
    const double begin = cpuSeconds();
    cv::remap(photo, result, map, {}, cv::INTER_CUBIC);
    return cpuSeconds() - begin;
}

double middle(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double mean(const std::vector<double>& values)
{
    double sum = 0;
    for (const double value : values)
        sum += value;
    return values.empty() ? 0 : sum / double(values.size());
}

/// All pages that one way of flattening made.
struct Row
{
    std::vector<double> bend, arch, tilt, ssim, wrong, fingers, farthest;
    std::vector<double> likeness; ///< SSIM of every page, 0 for a lost one
    int pages = 0, lost = 0;

    void add(const SpreadPage& page, cv::Size2d pageMm, const cv::Mat& picture, bool isRead)
    {
        ++pages;
        const auto score = picture.empty() ? std::nullopt : measure(page, pageMm, picture);
        if (isRead && !picture.empty())
            if (const auto errors = wrongCharacters(page.page, pageMm, picture))
                wrong.push_back(100 * *errors);
        likeness.push_back(score ? score->ssim : 0);
        // Empty paper has nothing that could be found.
        if (!score) {
            lost += page.page.content != deskpictures::PageContent::Empty;
            return;
        }
        addLines(*score);
        ssim.push_back(score->ssim);
        farthest.push_back(score->farthest);
        if (score->fingers)
            fingers.push_back(100 * *score->fingers);
    }
    void addLines(const PageScore& score)
    {
        if (score.lines == 0)
            return;
        bend.push_back(score.bend);
        arch.push_back(score.arch);
        tilt.push_back(score.tilt);
    }
    void print(const char* name) const
    {
        std::printf("  %-22s %7.2f %7.2f %8.3f %8.3f %7.2f %8.1f %8.4f %8.2f %9.1f %5d/%d\n",
                    name,
                    mean(bend),
                    middle(bend),
                    middle(arch),
                    arch.empty() ? 0 : *std::max_element(arch.begin(), arch.end()),
                    mean(tilt),
                    mean(wrong),
                    mean(ssim),
                    middle(farthest),
                    mean(fingers),
                    lost,
                    pages);
    }
};

void keep(const std::string& path, const std::vector<cv::Mat>& pictures, int height)
{
    cv::Mat sheet;
    std::vector<cv::Mat> scaled;
    for (const cv::Mat& picture : pictures)
        if (!picture.empty()) {
            cv::Mat small;
            cv::resize(picture,
                       small,
                       {std::max(1, picture.cols * height / picture.rows), height},
                       0,
                       0,
                       cv::INTER_AREA);
            scaled.push_back(small);
        }
    cv::hconcat(scaled, sheet);
    mirvak::Image image;
    image.pixels = sheet;
    QFile::remove(QString::fromStdString(path)); // of the run before
    mirvak::writeImage(path, image, 88);
}

/// @return pages whose SSIM is less than that of the crop
int compare(const Row& ours, const Row& crop)
{
    int worse = 0;
    for (size_t i = 0; i < ours.likeness.size(); ++i)
        worse += ours.likeness[i] < crop.likeness[i];
    return worse;
}

class Benchmark
{
public:
    explicit Benchmark(bool isRead) : isRead_(isRead) {}

    void add(uint64_t seed, const std::string& folder)
    {
        const Spread spread = deskpictures::makeSpread(seed, photoPx);
        const Pages flat = flatten(spread.photo, true, doublePage);
        times_.push_back(1000 * flat.seconds);
        remaps_.push_back(1000 * plainRemapSeconds(spread.photo));
        memory_.push_back(flat.bytesPerPixel);
        failed_ += flat.code != MIRVAK_OK;
        std::printf("seed %llu: %s, %s, code %d\n",
                    static_cast<unsigned long long>(seed),
                    spread.name.c_str(),
                    spread.bend.c_str(),
                    flat.code);
        std::fflush(stdout);
        for (const bool isRight : {false, true}) {
            const SpreadPage& page = isRight ? *spread.right : spread.left;
            const cv::Mat crop = rivals::cropped(spread, isRight);
            rows_["ours"].add(page, spread.pageMm, isRight ? flat.right : flat.left, isRead_);
            rows_["true corners, cropped"].add(page, spread.pageMm, crop, isRead_);
            rows_["  and Leptonica"].add(page, spread.pageMm, rivals::dewarped(crop), isRead_);
            // What the measure itself is worth: the same crop by its geometry.
            rows_["  by geometry"].addLines(linesOf(page, spread.pageMm, [&](cv::Point2d point) {
                return rivals::placeInCrop(spread, isRight, point);
            }));
            rows_["the true page itself"].add(page, spread.pageMm, trueFlat(page), isRead_);
        }
        if (!folder.empty())
            keep(folder + '/' + std::to_string(seed) + ".jpg",
                 {spread.photo, flat.left, flat.right, trueFlat(spread.left), trueFlat(*spread.right)},
                 900);
    }

    void addSheet(uint64_t seed, const std::string& folder)
    {
        const Spread sheet = deskpictures::makeFlatSheet(seed, largePx);
        const Pages flat = flatten(sheet.photo, false, singlePage);
        if (flat.code != MIRVAK_OK || flat.left.empty()) {
            std::printf("sheet %llu: code %d\n", static_cast<unsigned long long>(seed), flat.code);
            ++sheetsFailed_;
            return;
        }
        if (const auto score = measure(sheet.left, sheet.pageMm, flat.left))
            displaced_.push_back(score->farthest * flat.left.cols / 1000);
        else
            std::printf("sheet %llu: %s is not found again\n",
                        static_cast<unsigned long long>(seed),
                        sheet.name.c_str());
        if (!folder.empty())
            keep(folder + "/sheet-" + std::to_string(seed) + ".jpg", {sheet.photo, flat.left}, 900);
    }

    void print() const
    {
        std::printf("\n%-24s %7s %7s %8s %8s %7s %8s %8s %8s %9s %5s\n",
                    "pages of spreads",
                    "bend",
                    "median",
                    "arch",
                    "worst",
                    "tilt",
                    "wrong %",
                    "SSIM",
                    "far",
                    "fingers %",
                    "lost");
        for (const char* name :
             {"ours", "true corners, cropped", "  by geometry", "  and Leptonica", "the true page itself"})
            rows_.at(name).print(name);
        std::printf("bend, far: thousandths of the page's width; arch: heights of type; tilt: degrees\n");
        std::printf("less like the page than the crop (SSIM): %d; spreads refused: %d\n",
                    compare(rows_.at("ours"), rows_.at("true corners, cropped")),
                    failed_);
        std::printf(
            "flat sheets at 3264x2448: farthest place %.2f px in the median, %.2f px at most; refused: %d\n",
            middle(displaced_),
            displaced_.empty() ? 0 : *std::max_element(displaced_.begin(), displaced_.end()),
            sheetsFailed_);
        std::printf(
            "a spread of 5 MP: %.0f ms of computing, a plain remap of it %.0f ms, %.1f bytes a pixel\n",
            middle(times_),
            middle(remaps_),
            *std::max_element(memory_.begin(), memory_.end()));
        const Spread large = deskpictures::makeSpread(4, largePx);
        const Pages flat = flatten(large.photo, true, doublePage);
        std::printf(
            "a spread of 8 MP: %.0f ms of computing, a plain remap of it %.0f ms, %.1f bytes a pixel\n",
            1000 * flat.seconds,
            1000 * plainRemapSeconds(large.photo),
            flat.bytesPerPixel);
    }

private:
    const bool isRead_;
    std::map<std::string, Row> rows_;
    std::vector<double> times_, remaps_, memory_, displaced_;
    int failed_ = 0, sheetsFailed_ = 0;
};

int showPhotos(const QString& folder, const QString& out)
{
    QDir().mkpath(out);
    for (const QString& name : QDir(folder).entryList({QStringLiteral("*.jpg")})) {
        const auto photo = mirvak::readImage(QDir(folder).filePath(name).toStdString());
        if (!photo)
            continue;
        const Pages two = flatten(photo->pixels, true, doublePage);
        const Pages one = flatten(photo->pixels, true, singlePage);
        std::printf("%s: two pages: code %d, %.0f ms; one: code %d\n",
                    qPrintable(name),
                    two.code,
                    1000 * two.seconds,
                    one.code);
        keep(QDir(out).filePath(name).toStdString(), {photo->pixels, two.left, two.right, one.left}, 1200);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("OMP_THREAD_LIMIT", "1"); // many times slower on a busy machine otherwise
    const QGuiApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    cv::setNumThreads(1);
    if (arguments.value(1) == QLatin1String("--photos") && arguments.size() == 4)
        return showPhotos(arguments.at(2), arguments.at(3));
    const bool isRead = arguments.removeAll(QStringLiteral("--no-text")) == 0;
    const int scenes = arguments.value(1, QStringLiteral("12")).toInt();
    const unsigned seed = arguments.value(2, QStringLiteral("1")).toUInt();
    const QString folder = arguments.value(3);
    if (!folder.isEmpty())
        QDir().mkpath(folder);
    Benchmark benchmark(isRead);
    for (unsigned i = 0; i < unsigned(std::max(1, scenes)); ++i) {
        benchmark.add(seed + i, folder.toStdString());
        if (i % 2 == 0)
            benchmark.addSheet(seed + i, folder.toStdString());
    }
    benchmark.print();
    return 0;
}

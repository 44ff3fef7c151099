// How many codes of made pictures are read, beside what plain passes of ZBar and ZXing-C++ read of the same;
// false reads on text; the time for a frame without codes; and damaged frames, on which nothing may end this
// process.
//   bench_codes [PICTURES [DAMAGED]]
//   bench_codes --labels COUNT [SEED]     hasty photographs of one-dimensional codes: what is read, what is
//   wrong
#include "CodePictures.h"
#include "CodeReader.h"
#include "Codec.h"
#include "Rivals.h"
#include "TextPages.h"

#include <QGuiApplication>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <set>
#include <sys/resource.h>

namespace {

constexpr unsigned seed = 20;
constexpr int picturesByDefault = 42; // each condition in each size twice
constexpr int damagedByDefault = 40;
constexpr int pagesOfText = 50;

struct Score
{
    int laid = 0, read = 0, wrong = 0;
    double recall() const { return laid ? 100.0 * read / laid : 0; }
    double precision() const { return read + wrong ? 100.0 * read / (read + wrong) : 100; }
    void add(const std::vector<LaidCode>& codes, const std::vector<std::string>& texts)
    {
        std::multiset<std::string> left(texts.begin(), texts.end());
        for (const LaidCode& code : codes) {
            const auto found = left.find(code.text);
            ++laid;
            read += found != left.end();
            if (found != left.end())
                left.erase(found);
        }
        wrong += static_cast<int>(left.size());
    }
};

struct Reader
{
    const char* name;
    std::function<std::vector<std::string>(const cv::Mat& grey)> read;
    std::map<std::string, Score> of; ///< by condition; "all" for all
};

std::vector<std::string> readByUs(const cv::Mat& rgb)
{
    static const mirvak::CodeReader reader(LUMRO_CODE_HELPER);
    std::vector<std::string> texts;
    for (const mirvak::Code& code : reader.read(rgb))
        texts.push_back(code.text);
    return texts;
}

std::vector<Reader> readers()
{
    std::vector<Reader> all{{"ours",
                             [](const cv::Mat& grey) {
                                 cv::Mat rgb;
                                 cv::cvtColor(grey, rgb, cv::COLOR_GRAY2RGB);
                                 return readByUs(rgb);
                             },
                             {}}};
    if (readByZBar(cv::Mat(8, 8, CV_8UC1, cv::Scalar(255))))
        all.push_back({"zbarimg", [](const cv::Mat& grey) { return readByZBar(grey).value(); }, {}});
    else
        std::puts("zbarimg is not installed: left out");
    all.push_back({"ZXing", readByZXing, {}});
    return all;
}

void compareReading(int pictures)
{
    if (pictures < 1)
        return;
    std::vector<Reader> all = readers();
    CodePictures made(seed);
    for (int i = 0; i < pictures; ++i) {
        const CodePicture picture = made.next();
        for (Reader& reader : all) {
            const std::vector<std::string> texts = reader.read(picture.grey);
            reader.of[picture.condition].add(picture.codes, texts);
            reader.of["all"].add(picture.codes, texts);
        }
    }
    std::printf("%-22s %6s", "codes read, %", "codes");
    for (const Reader& reader : all)
        std::printf(" %9s", reader.name);
    for (const auto& [condition, score] : all[0].of) {
        std::printf("\n%-22s %6d", condition.c_str(), score.laid);
        for (const Reader& reader : all)
            std::printf(" %9.1f", reader.of.at(condition).recall());
    }
    std::printf("\n%-22s %6s", "precision, %", "");
    double best = 0;
    for (const Reader& reader : all) {
        std::printf(" %9.2f", reader.of.at("all").precision());
        if (&reader != &all[0])
            best = std::max(best, reader.of.at("all").recall());
    }
    std::printf("\n%-58s %9.1f  at least 10.0\n",
                "percentage points above the better of the others",
                all[0].of.at("all").recall() - best);
}

void compareLabels(int count, unsigned from)
{
    std::vector<Reader> all = readers();
    CodePictures made(from);
    for (int i = 0; i < count; ++i) {
        const CodePicture picture = made.nextLabel();
        for (Reader& reader : all) {
            const std::vector<std::string> texts = reader.read(picture.grey);
            const int before = reader.of["all"].wrong;
            reader.of[picture.condition].add(picture.codes, texts);
            reader.of["all"].add(picture.codes, texts);
            if (reader.of["all"].wrong > before && &reader == &all[0]) {
                std::printf("wrong in picture %d: %s", i, picture.codes[0].text.c_str());
                for (const std::string& text : texts)
                    std::printf(" \"%s\"", text.c_str());
                std::puts("");
            }
        }
    }
    std::printf("%-14s %6s", "labels", "codes");
    for (const Reader& reader : all)
        std::printf(" %9s %% wrong", reader.name);
    for (const auto& [kind, score] : all[0].of) {
        std::printf("\n%-14s %6d", kind.c_str(), score.laid);
        for (const Reader& reader : all)
            std::printf(" %9.1f %7d", reader.of.at(kind).recall(), reader.of.at(kind).wrong);
    }
    std::puts("");
}

void countFalseReads()
{
    size_t found = 0;
    for (const cv::Mat& page : textPages(pagesOfText))
        found += readByUs(page).size();
    std::printf("%-58s %9zu  at most 0\n", "codes read on 50 pages of text", found);
}

// Computing time, of all processes.
double secondsComputed()
{
    const auto of = [](int who) {
        rusage usage{};
        getrusage(who, &usage);
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
        };
        return seconds(usage.ru_utime) + seconds(usage.ru_stime);
    };
    return of(RUSAGE_SELF) + of(RUSAGE_CHILDREN);
}

void timeEmptyFrames()
{
    double slowest = 0;
    for (const char* name :
         {"01-letter", "02-form", "04-chinese-text", "08-receipt", "09-card-front", "12-book"}) {
        const auto page =
            mirvak::readImage(std::string(LUMRO_DESK_DIR "/pictures/3264x2448/") + name + ".jpg");
        if (!page)
            continue;
        double quickest = 1e9;
        for (int i = 0; i < 5; ++i) {
            const double before = secondsComputed();
            readByUs(page->pixels);
            quickest = std::min(quickest, secondsComputed() - before);
        }
        slowest = std::max(slowest, quickest);
    }
    std::printf(
        "%-58s %9.2f  at most 0.30\n", "seconds computed for 3264x2448 without codes, slowest", slowest);
}

void readDamaged(int count)
{
    CodePictures made(seed + 1);
    cv::RNG random(seed);
    cv::Mat whole;
    for (int i = 0; i < count; ++i) {
        if (i % 20 == 0)
            cv::cvtColor(made.next().grey, whole, cv::COLOR_GRAY2RGB);
        const cv::Size size(std::min(900, whole.cols), std::min(700, whole.rows));
        const cv::Point corner(random.uniform(0, whole.cols - size.width + 1),
                               random.uniform(0, whole.rows - size.height + 1));
        cv::Mat damaged = whole(cv::Rect(corner, size)).clone();
        for (int spot = 0; spot < 50; ++spot) {
            const cv::Rect place(random.uniform(0, size.width),
                                 random.uniform(0, size.height),
                                 random.uniform(1, 80),
                                 random.uniform(1, 20));
            cv::rectangle(damaged, place, cv::Scalar::all(random.uniform(0, 256)), cv::FILLED);
        }
        readByUs(damaged);
    }
    std::printf("%-58s %9d\n", "damaged frames survived", count);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication app(argc, argv);
    if (argc > 2 && std::strcmp(argv[1], "--labels") == 0) {
        compareLabels(std::atoi(argv[2]), argc > 3 ? static_cast<unsigned>(std::atoi(argv[3])) : seed);
        return 0;
    }
    compareReading(argc > 1 ? std::atoi(argv[1]) : picturesByDefault);
    countFalseReads();
    timeEmptyFrames();
    readDamaged(argc > 2 ? std::atoi(argv[2]) : damagedByDefault);
    return 0;
}

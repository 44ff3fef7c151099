// The face library: time from a picture to its descriptor on one core, and memory, beside their limits; then,
// with photographs at hand, how often it is wrong.   bench_faces [FOLDER]
//
// In the folder lie two or more JPEG, PNG or BMP pictures of each person, one face in each; a person's have
// one name but for the number at its end: anna1.jpg, anna2.jpg, Li_Wei_01.jpg. Each is compared with each,
// and with card portraits made from them (102 x 126 pixels, JPEG quality 25). "plain" is the network alone,
// on the face as it was first found; "library" is what IdFaceSdkFeatureGet does.
#include "Codec.h"
#include "DrawnFaces.h"
#include "FaceEngine.h"
#include "Picture.h"
#include "idfacesdk.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>

namespace {

namespace fs = std::filesystem;

constexpr double allowedMs = 60;
constexpr double allowedMiB = 200;
constexpr double limit = 0.5; // of the cosine: a score of 50

void row(const char* what, double value, double allowed)
{
    std::printf("%-58s %9.1f %9.1f %7.3f %8.2f\n", what, value, allowed, value / allowed, 1.0);
}

double peakMiB()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    double kiB = 0;
    while (status >> word) {
        if (word == "VmHWM:")
            status >> kiB;
    }
    return kiB / 1024;
}

bool measureLibrary()
{
    constexpr int runs = 31;
    const cv::Mat picture = drawn::picture();
    if (IdFaceSdkInit(LUMRO_FACE_LIBRARY, nullptr) != ID_FACE_OK)
        return false;
    std::vector<unsigned char> feature(static_cast<size_t>(IdFaceSdkFeatureSize()));
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        IdFaceInfo face;
        const std::clock_t begin = std::clock();
        if (IdFaceSdkDetectFace(picture.data, picture.cols, picture.rows, &face) != 1 ||
            IdFaceSdkFeatureGet(picture.data, picture.cols, picture.rows, &face, feature.data()) != 0)
            return false;
        times.push_back(1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
    }
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    row("640 x 480, picture to descriptor, computing on one core: ms", times[runs / 2], allowedMs);
    row("memory at most, all of the process: MiB", peakMiB(), allowedMiB);
    IdFaceSdkUninit();
    return true;
}

struct Photograph
{
    std::string person;
    cv::Mat rgb;
    cv::Rect2f face;
};

std::string personOf(const fs::path& file)
{
    const std::string name = file.stem().string();
    return name.substr(0, name.find_last_not_of("0123456789_-. ") + 1);
}

std::vector<Photograph> photographsIn(const fs::path& folder, face::FaceEngine& engine)
{
    std::vector<Photograph> all;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const auto image = mirvak::readImage(entry.path().string());
        const auto faces = image ? engine.find(image->pixels) : std::vector<face::Face>();
        if (faces.empty())
            std::printf("%s: no face\n", entry.path().filename().c_str());
        else
            all.push_back({personOf(entry.path()), image->pixels, faces.front().found.box});
    }
    return all;
}

// As an identity card stores it.
cv::Mat cardPortrait(const Photograph& photograph)
{
    constexpr int width = 102, height = 126, quality = 25;
    const cv::Rect2f& box = photograph.face;
    const float wide = box.width * 1.7F;
    const float high = wide * height / width;
    const cv::Rect2f around(
        box.x + (box.width - wide) / 2, box.y + box.height * 0.45F - high / 2, wide, high);
    mirvak::Image card;
    card.pixels = face::resized(photograph.rgb(face::inside(around, photograph.rgb)), {width, height});
    return mirvak::decodeImage(mirvak::encodeImage("jpg", card, quality))->pixels;
}

using Describe = std::function<cv::Mat(const cv::Mat&)>;

struct Cosines
{
    std::vector<double> same, other;
};

Cosines
compare(const std::vector<Photograph>& all, const std::vector<cv::Mat>& a, const std::vector<cv::Mat>& b)
{
    Cosines cosines;
    for (size_t i = 0; i < all.size(); ++i) {
        for (size_t j = 0; j < all.size(); ++j) {
            const double cosine = a[i].empty() || b[j].empty() ? 0 : a[i].dot(b[j]);
            if (i != j)
                (all[i].person == all[j].person ? cosines.same : cosines.other).push_back(cosine);
        }
    }
    std::sort(cosines.same.begin(), cosines.same.end());
    std::sort(cosines.other.begin(), cosines.other.end());
    return cosines;
}

double percentBelow(const std::vector<double>& sorted, double value)
{
    const auto below = std::lower_bound(sorted.begin(), sorted.end(), value) - sorted.begin();
    return sorted.empty() ? 0 : 100.0 * static_cast<double>(below) / static_cast<double>(sorted.size());
}

void tell(const char* what, const Cosines& cosines)
{
    constexpr double oneInThousand = 0.999;
    const auto at = static_cast<size_t>(oneInThousand * static_cast<double>(cosines.other.size()));
    const double strict =
        cosines.other.empty() ? limit : cosines.other[std::min(at, cosines.other.size() - 1)];
    std::printf(
        "%-36s at 50: refused %6.2f %%, accepted %6.3f %%; at 0.1 %% accepted (%2.0f): refused %6.2f %%\n",
        what,
        percentBelow(cosines.same, limit),
        100 - percentBelow(cosines.other, limit),
        100 * strict,
        percentBelow(cosines.same, strict));
}

void measureErrors(const char* folder)
{
    const std::string weights = LUMRO_FACE_LIBRARY "/models/face";
    face::FaceEngine engine(weights);
    face::Recogniser network(face::Weights(weights + "/recogniser.json"));
    const std::vector<Photograph> all = photographsIn(folder, engine);
    const auto found = [&](const cv::Mat& rgb, const auto& describe) {
        const auto faces = engine.find(rgb);
        return faces.empty() ? cv::Mat() : cv::Mat(describe(faces.front().points));
    };
    const Describe plain = [&](const cv::Mat& rgb) {
        return found(rgb, [&](const face::Landmarks& points) {
            const cv::Mat numbers = network.numbersOf({face::Recogniser::chipOf(rgb, points)});
            return cv::Mat(numbers / cv::norm(numbers));
        });
    };
    const Describe library = [&](const cv::Mat& rgb) {
        return found(rgb, [&](const face::Landmarks& points) { return engine.describe(rgb, points); });
    };
    std::printf("%zu photographs, each with each and with card portraits\n", all.size());
    for (const auto& [name, describe] : {std::pair("plain", plain), std::pair("library", library)}) {
        std::vector<cv::Mat> photographs, cards;
        for (const Photograph& photograph : all) {
            photographs.push_back(describe(photograph.rgb));
            cards.push_back(describe(cardPortrait(photograph)));
        }
        tell((std::string(name) + ", photographs").c_str(), compare(all, photographs, photographs));
        tell((std::string(name) + ", card and photograph").c_str(), compare(all, cards, photographs));
    }
}

} // namespace

int main(int argc, char** argv)
{
    cv::setNumThreads(1);
    if (!measureLibrary())
        return 1;
    if (argc > 1)
        measureErrors(argv[1]);
    return 0;
}

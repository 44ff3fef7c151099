// The calls of the library, on drawn faces.
#include "Codec.h"
#include "Descriptor.h"
#include "DrawnFaces.h"
#include "Landmarks.h"
#include "PictureBytes.h"
#include "Pixels.h"
#include "TempDir.h"
#include "idfacesdk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <filesystem>
#include <limits>

namespace {

using drawn::Person;
using drawn::Place;
namespace fs = std::filesystem;
using Feature = std::vector<unsigned char>;

const Person stranger{{120, 80, 60}, {20, 15, 12}, {40, 60, 60}, 72, 96, 56, 9, 24, 130};

int detect(const cv::Mat& rgb, IdFaceInfo& face)
{
    return IdFaceSdkDetectFace(rgb.data, rgb.cols, rgb.rows, &face);
}

Feature featureOf(const cv::Mat& rgb)
{
    Feature feature(static_cast<size_t>(IdFaceSdkFeatureSize()));
    IdFaceInfo face;
    EXPECT_GE(detect(rgb, face), 1);
    EXPECT_EQ(IdFaceSdkFeatureGet(rgb.data, rgb.cols, rgb.rows, &face, feature.data()), ID_FACE_OK);
    return feature;
}

int compare(const Feature& a, const Feature& b)
{
    return IdFaceSdkFeatureCompare(a.data(), b.data());
}

/// As an identity card stores a portrait.
cv::Mat cardPortrait(const Person& person)
{
    const cv::Mat large = drawn::picture({{204, 230}, 1.1, 0}, person, {408, 504});
    mirvak::Image card;
    cv::resize(large, card.pixels, {102, 126}, 0, 0, cv::INTER_AREA);
    return mirvak::decodeImage(mirvak::encodeImage("jpg", card, 25))->pixels;
}

/// Farthest of eyes, nose and mouth from where they were drawn, in distances between the eyes.
double farthest(const IdFaceInfo& info, const std::vector<cv::Point2f>& truth)
{
    face::Landmarks p;
    for (size_t i = 0; i < p.size(); ++i)
        p[i] = {info.points[i][0], info.points[i][1]};
    const cv::Point2f found[] = {face::leftEye(p), face::rightEye(p), p[30], p[48], p[54]};
    double most = 0;
    for (size_t i = 0; i < truth.size(); ++i)
        most = std::max(most, cv::norm(found[i] - truth[i]));
    return most / cv::norm(truth[1] - truth[0]);
}

class FaceSdk : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ(IdFaceSdkInit(FACE_LIBRARY, "/tmp"), ID_FACE_OK); }
    void TearDown() override { EXPECT_EQ(IdFaceSdkUninit(), ID_FACE_OK); }
};

} // namespace

TEST_F(FaceSdk, findsFacesWhereTheyAre)
{
    struct Case
    {
        const char* name;
        Place place;
        double allowed; // a tenth: what moves a score by a few points only; a cut face has less to go by
        cv::Size size{640, 480};
    };
    const std::vector<Case> cases{{"upright", {}, 0.1},
                                  {"turned left", {{320, 220}, 1, -20}, 0.1},
                                  {"turned right", {{320, 220}, 1, 20}, 0.1},
                                  {"small", {{150, 100}, 0.25, 0}, 0.15},
                                  {"fills the picture", {{160, 150}, 1.5, 0}, 0.1, {320, 400}},
                                  {"large picture", {{1632, 1000}, 5, 5}, 0.1, {3264, 2448}},
                                  {"high picture", {{60, 300}, 0.5, 0}, 0.1, {120, 900}},
                                  {"cut off at the left", {{45, 220}, 1, 0}, 0.2},
                                  {"cut off at the top", {{320, 10}, 1, 0}, 0.15}};
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        IdFaceInfo face;
        ASSERT_EQ(detect(drawn::picture(one.place, {}, one.size), face), 1);
        EXPECT_EQ(face.pointCount, ID_FACE_POINTS);
        EXPECT_LT(farthest(face, drawn::fivePoints(one.place)), one.allowed);
        const cv::Rect2d box(face.left, face.top, face.width, face.height);
        EXPECT_TRUE(box.contains(one.place.eyes));
        EXPECT_NEAR(face.width / one.place.scale, 250, 100); // drawn: 224
    }
}

TEST_F(FaceSdk, countsFacesAndGivesTheLargest)
{
    cv::Mat rgb = drawn::room({900, 480});
    drawn::face(rgb, {{220, 220}, 0.6, 0}, stranger);
    drawn::face(rgb, {{620, 220}, 1, 0});
    IdFaceInfo face;
    ASSERT_EQ(detect(rgb, face), 2);
    EXPECT_LT(farthest(face, drawn::fivePoints({{620, 220}, 1, 0})), 0.1);
    Feature feature(static_cast<size_t>(IdFaceSdkFeatureSize()));
    ASSERT_EQ(IdFaceSdkFeatureGet(rgb.data, rgb.cols, rgb.rows, &face, feature.data()), ID_FACE_OK);
    EXPECT_GT(compare(feature, featureOf(drawn::picture())), 90);

    for (const cv::Size size : {cv::Size(640, 480), cv::Size(1, 1), cv::Size(1, 500), cv::Size(700, 2)}) {
        EXPECT_EQ(detect(drawn::room(size), face), 0) << size;
        EXPECT_EQ(face.pointCount, 0);
        EXPECT_EQ(face.width, 0);
    }
    EXPECT_LE(std::abs(detect(drawn::picture({{320, 240}, 1, 90}), face) - 0.5), 0.5); // found or not
}

TEST_F(FaceSdk, takesTheClearerOneWhereAllAreDoubtful)
{
    const Place left{{240, 220}, 0.3, 45}, right{{660, 220}, 0.3, 45};
    const cv::Mat empty = drawn::room({900, 480});
    // The detector sees more in the right one.
    for (const auto& [onLeft, onRight, clearer] : {std::tuple(0.6, 0.5, right), {0.8, 0.45, left}}) {
        cv::Mat rgb;
        for (const auto& [place, share] : {std::pair(left, onLeft), {right, onRight}}) {
            cv::Mat one = rgb.empty() ? empty.clone() : rgb.clone();
            drawn::face(one, place);
            cv::addWeighted(one, share, rgb.empty() ? empty : rgb, 1 - share, 0, rgb);
        }
        IdFaceInfo face;
        ASSERT_EQ(detect(rgb, face), 1);
        EXPECT_TRUE(cv::Rect2d(face.left, face.top, face.width, face.height).contains(clearer.eyes));
    }
}

TEST_F(FaceSdk, tellsPersonsApartOnPhotographsAndCards)
{
    // Drawn faces are more like each other than those of people: what counts is who is more like whom.
    const Feature one = featureOf(drawn::picture()), other = featureOf(drawn::picture({}, stranger));
    EXPECT_EQ(compare(one, one), 100);
    EXPECT_EQ(compare(one, other), compare(other, one));
    EXPECT_LT(compare(one, other), 85);
    cv::Mat shaded = drawn::picture({{250, 200}, 0.7, 12}), mirrored;
    shaded.convertTo(shaded, -1, 0.7, -5);
    EXPECT_GT(compare(one, featureOf(shaded)), 95);
    const cv::Mat dim = drawn::picture() * 0.05; // the detector finds nothing in it as it is
    EXPECT_GT(compare(one, featureOf(dim)), 90);
    cv::flip(drawn::picture(), mirrored, 1);
    EXPECT_GT(compare(one, featureOf(mirrored)), 95);
    const Feature card = featureOf(cardPortrait({})), otherCard = featureOf(cardPortrait(stranger));
    EXPECT_GT(compare(card, one), compare(card, other) + 15);
    EXPECT_GT(compare(otherCard, other), compare(otherCard, one) + 15);
}

TEST_F(FaceSdk, remembersTheInfraredPictureUntilItIsStartedAnew)
{
    const auto liveness = [](const cv::Mat& rgb, int expected) {
        IdFaceInfo face;
        int score = -1;
        EXPECT_EQ(detect(rgb, face), 1);
        const auto result = IdFaceSdkLiveFaceDetect(640, 480, rgb.data, &face, nullptr, nullptr, &score);
        EXPECT_EQ(result, expected);
        return score;
    };
    EXPECT_EQ(liveness(drawn::picture(), 0), 19);
    EXPECT_GE(liveness(drawn::infrared(), 1), 50);
    EXPECT_GE(liveness(drawn::picture(), 1), 50);
    IdFaceInfo none;
    EXPECT_EQ(detect(drawn::room({640, 480}), none), 0); // before the other camera
    EXPECT_GE(liveness(drawn::picture(), 1), 50);
    EXPECT_EQ(liveness(drawn::infrared() * 1.6, 0), 5) << "too bright to tell";
    EXPECT_GE(liveness(drawn::infrared(), 1), 50);
    const cv::Mat nobody(480, 640, CV_8UC3, cv::Scalar::all(90)); // before the infrared camera
    EXPECT_EQ(detect(nobody, none), 0);
    EXPECT_EQ(liveness(drawn::picture(), 0), 19) << "who was there has gone";
    EXPECT_GE(liveness(drawn::infrared(), 1), 50);
    IdFaceSdkUninit();
    ASSERT_EQ(IdFaceSdkInit(FACE_LIBRARY, nullptr), ID_FACE_OK);
    EXPECT_EQ(liveness(drawn::picture(), 0), 19);
}

TEST_F(FaceSdk, refusesWhatIsNoPictureNoFaceOrNotReady)
{
    const cv::Mat rgb = drawn::picture();
    IdFaceInfo face;
    ASSERT_EQ(detect(rgb, face), 1);
    Feature feature(static_cast<size_t>(IdFaceSdkFeatureSize()), 7);
    const Feature untouched = feature;
    const auto get = [&](const cv::Mat& of, const IdFaceInfo* from) {
        return IdFaceSdkFeatureGet(of.data, of.cols, of.rows, from, feature.data());
    };
    int score = 7;
    EXPECT_EQ(IdFaceSdkDetectFace(nullptr, 5, 5, &face), ID_FACE_BAD_ARGUMENT);
    EXPECT_EQ(IdFaceSdkDetectFace(rgb.data, 5, 0, &face), ID_FACE_BAD_ARGUMENT);
    EXPECT_EQ(IdFaceSdkDetectFace(rgb.data, 5, 5, nullptr), ID_FACE_BAD_ARGUMENT);
    EXPECT_EQ(get(rgb, nullptr), ID_FACE_BAD_ARGUMENT);
    IdFaceInfo none{}, broken = face;
    broken.points[40][1] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(get(rgb, &none), ID_FACE_NO_FACE);
    EXPECT_EQ(get(rgb, &broken), ID_FACE_NO_FACE);
    EXPECT_EQ(get(drawn::room({60, 40}), &face), ID_FACE_NO_FACE); // one of another picture
    EXPECT_EQ(IdFaceSdkLiveFaceDetect(640, 480, rgb.data, &none, nullptr, nullptr, &score), ID_FACE_NO_FACE);
    EXPECT_EQ(score, 0);
    EXPECT_EQ(IdFaceSdkGetLiveFaceStatus(), 1);
    IdFaceSdkUninit();
    EXPECT_EQ(IdFaceSdkGetLiveFaceStatus(), 0);
    EXPECT_EQ(detect(rgb, face), ID_FACE_NOT_READY);
    EXPECT_EQ(get(rgb, &face), ID_FACE_NOT_READY);
    EXPECT_EQ(IdFaceSdkLiveFaceDetect(640, 480, rgb.data, &face, nullptr, nullptr, &score),
              ID_FACE_NOT_READY);
    EXPECT_EQ(feature, untouched);
}

TEST(FaceSdkInit, failsWithoutWholeWeightsAndSaysWhy)
{
    const std::string good = FACE_LIBRARY "/models/face";
    EXPECT_EQ(IdFaceSdkInit(FACE_LIBRARY, nullptr), ID_FACE_OK);
    EXPECT_EQ(IdFaceSdkInit(nullptr, nullptr), ID_FACE_BAD_ARGUMENT);
    EXPECT_EQ(IdFaceSdkGetLiveFaceStatus(), 0); // what was ready is no longer
    for (const std::string name : {"recogniser.bin", "recogniser.json", "face_landmark_68_model.bin"}) {
        std::string changed = TempDir::contentOf(good + "/" + name);
        changed[0] ^= 0x40; // one bit
        for (const std::string& content : {std::string(), changed, changed.substr(0, 1000)}) {
            const TempDir folder;
            fs::create_directories(folder.file("models"));
            fs::copy(good, folder.file("models/face"));
            folder.write("models/face/" + name, content);
            ASSERT_EQ(IdFaceSdkInit(FACE_LIBRARY, nullptr), ID_FACE_OK);
            testing::internal::CaptureStderr();
            const int result = IdFaceSdkInit(folder.path().c_str(), nullptr);
            const std::string said = testing::internal::GetCapturedStderr();
            EXPECT_EQ(IdFaceSdkGetLiveFaceStatus(), 0);
            EXPECT_EQ(result, ID_FACE_NO_WEIGHTS) << name << content.size();
            EXPECT_THAT(said, testing::HasSubstr(name.substr(0, 10)));
            EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
        }
    }
    EXPECT_EQ(IdFaceSdkInit(FACE_LIBRARY, nullptr), ID_FACE_OK);
    IdFaceInfo face;
    EXPECT_EQ(detect(drawn::picture(), face), 1);
}

TEST(FaceScore, isTheCosineWithinZeroAndHundred)
{
    const auto turned = [](double cosine) {
        face::Descriptor one{};
        one[0] = static_cast<float>(3 * cosine);
        one[191] = static_cast<float>(3 * std::sqrt(1 - cosine * cosine));
        return one;
    };
    const auto score = [&](const face::Descriptor& other) { return face::scoreOf(turned(1), other); };
    for (const auto& [cosine, expected] : {std::pair(1.0, 100), {0.5, 50}, {0.4999, 49}, {-0.5, 0}})
        EXPECT_EQ(score(turned(cosine)), expected) << cosine;
    face::Descriptor none = turned(1);
    none[5] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(score(none) + score({}), 0);
    const Feature empty(static_cast<size_t>(IdFaceSdkFeatureSize()));
    EXPECT_EQ(compare(empty, empty), 0);
    EXPECT_EQ(IdFaceSdkFeatureCompare(empty.data(), nullptr), ID_FACE_BAD_ARGUMENT);
}

TEST(ReadImageFile, tellsTheSizeThenThePixels)
{
    const TempDir folder;
    mirvak::Image image;
    image.pixels = cv::Mat(2, 3, CV_8UC3, cv::Scalar(10, 20, 30));
    image.pixels.at<cv::Vec3b>(0, 2) = {255, 0, 0};
    const std::string png = folder.file("肖像.png");
    ASSERT_EQ(mirvak::writeImage(png, image, 95), mirvak::WriteResult::ok);
    int width = 0, height = 0;
    ASSERT_EQ(ReadImageFile(png.c_str(), nullptr, 0, &width, &height, 24), ID_FACE_OK);
    EXPECT_EQ(cv::Size(width, height), cv::Size(3, 2));
    cv::Mat pixels(height + 1, width, CV_8UC3, cv::Scalar::all(9)); // one row more, to stay as it is
    const auto read = [&](const std::string& path, int size, int bits = 24) {
        return ReadImageFile(path.c_str(), pixels.data, size, &width, &height, bits);
    };
    EXPECT_EQ(read(png, 17), ID_FACE_BAD_ARGUMENT);
    EXPECT_EQ(read(png, -1), ID_FACE_BAD_ARGUMENT);
    EXPECT_EQ(read(png, 18, 8), ID_FACE_BAD_ARGUMENT);
    EXPECT_EQ(ReadImageFile(png.c_str(), nullptr, 18, &width, &height, 24), ID_FACE_BAD_ARGUMENT);
    EXPECT_EQ(difference(pixels, cv::Mat(3, 3, CV_8UC3, cv::Scalar::all(9))), 0);
    ASSERT_EQ(read(png, 18), ID_FACE_OK);
    EXPECT_EQ(difference(pixels.rowRange(0, 2), image.pixels), 0);
    EXPECT_EQ(pixels.at<cv::Vec3b>(2, 0), cv::Vec3b::all(9));

    const mirvak::Bytes jpeg = withOrientation(mirvak::encodeImage("jpg", image, 95), 6);
    ASSERT_EQ(read(folder.write("turned.jpg", jpeg), 18), ID_FACE_OK);
    EXPECT_EQ(cv::Size(width, height), cv::Size(2, 3));
    EXPECT_EQ(read(folder.write("cut.jpg", mirvak::Bytes(jpeg.begin(), jpeg.begin() + 200)), 18),
              ID_FACE_BAD_PICTURE);
    EXPECT_EQ(read(folder.write("text.jpg", "no picture"), 18), ID_FACE_BAD_PICTURE);
    EXPECT_EQ(read(folder.file("missing.png"), 18), ID_FACE_BAD_PICTURE);
    EXPECT_EQ(read("", 18), ID_FACE_BAD_ARGUMENT);
}

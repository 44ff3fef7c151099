// Liveness on drawn faces: before an infrared camera, on a screen, in print.
#include "Liveness.h"
#include "DrawnFaces.h"
#include "FaceEngine.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <functional>

namespace {

using drawn::Place;

constexpr int notKnown = 19, living = 50;
const cv::Size size(640, 480);

cv::Mat withoutColours(const cv::Mat& rgb)
{
    cv::Mat gray, result;
    cv::cvtColor(rgb, gray, cv::COLOR_RGB2GRAY);
    cv::cvtColor(gray, result, cv::COLOR_GRAY2RGB);
    return result;
}

/// Skin bright, hair and brows dark, the wall behind hardly lit.
cv::Mat infrared(const Place& place = {})
{
    cv::Mat rgb = drawn::room(size, cv::Scalar::all(60));
    drawn::face(rgb, place, {cv::Scalar::all(200), cv::Scalar::all(70), cv::Scalar::all(60)});
    return withoutColours(rgb);
}

cv::Mat changed(const cv::Mat& rgb, const std::function<double(int x, int y)>& factor)
{
    cv::Mat result = rgb.clone();
    result.forEach<cv::Vec3b>([&](cv::Vec3b& pixel, const int* at) {
        for (int i = 0; i < 3; ++i)
            pixel[i] = cv::saturate_cast<uchar>(pixel[i] * factor(at[1], at[0]));
    });
    return result;
}

double wave(double pixels, double period)
{
    return std::sin(2 * CV_PI * pixels / period);
}

/// A sheet with a portrait, held before the camera.
cv::Mat heldSheet()
{
    cv::Mat rgb = drawn::room(size, {90, 80, 70});
    drawn::picture({{160, 180}, 1, 0}, {}, {320, 440}).copyTo(rgb(cv::Rect(160, 20, 320, 440)));
    return rgb;
}

class LivenessTest : public ::testing::Test
{
protected:
    /// One picture after the other, as the library's calls do it. @return the score of the last one; -1: no
    /// face
    int judge(const std::vector<cv::Mat>& pictures)
    {
        static face::FaceEngine engine(FACE_MODELS);
        face::Liveness liveness;
        int score = -1;
        for (const cv::Mat& rgb : pictures) {
            const auto faces = engine.find(rgb);
            if (faces.empty())
                liveness.noFace(rgb);
            score = faces.empty() ? -1 : liveness.judge(rgb, faces.front().points);
        }
        return score;
    }
};

} // namespace

TEST_F(LivenessTest, infraredTellsAFaceFromAScreenAndAPrint)
{
    EXPECT_GE(judge({infrared()}), living);
    EXPECT_GE(judge({infrared({{250, 200}, 0.6, 15})}), living);
    EXPECT_LT(judge({infrared() * 0.08}), 10); // a screen does not shine there
    const cv::Mat paleInk = infrared() * 0.5 + cv::Scalar::all(100);
    EXPECT_LT(judge({paleInk}), 10);
    EXPECT_LT(judge({paleInk, drawn::picture()}), living); // and the colours do not help it
    EXPECT_LT(judge({infrared() * 0.2}), notKnown);        // too dark to tell, where a face is still found
    // Before a wall as bright as the face, the lights in the eyes tell it from a black print, which has none.
    cv::Mat ink = drawn::room(size, cv::Scalar::all(170));
    drawn::face(ink, {}, {cv::Scalar::all(170), cv::Scalar::all(70), cv::Scalar::all(60)});
    ink = withoutColours(ink);
    EXPECT_GE(judge({ink}), living);
    ink = cv::min(ink, 165);
    EXPECT_LT(judge({ink}), living);
}

TEST_F(LivenessTest, coloursAloneNeverSayLivingAndSignsOfACopyLowerThem)
{
    const cv::Mat face = drawn::picture();
    EXPECT_EQ(judge({face}), notKnown);
    const cv::Mat grid = changed(face, [](int x, int y) { return 1 + 0.1 * wave(x, 3.3) * wave(y, 3.3); });
    const cv::Mat bars = changed(face, [](int, int y) { return 1 + 0.05 * wave(y, 40); });
    for (const cv::Mat& copy : {grid, bars, heldSheet()}) {
        EXPECT_LT(judge({copy}), notKnown);
        EXPECT_GE(judge({copy}), 0);
    }
    cv::Mat noise(size, CV_16SC3), noisy;
    cv::randn(noise, 0, 6); // a camera's own is no sign
    cv::add(face, noise, noisy, cv::noArray(), CV_8U);
    EXPECT_EQ(judge({noisy}), notKnown);
    cv::Mat busy = drawn::room(size);
    for (int i = 0; i < 300; ++i)
        cv::rectangle(
            busy, cv::Rect(i * 97 % 640, i * 61 % 480, 30, 20), cv::Scalar::all(i * 53 % 255), cv::FILLED);
    drawn::face(busy, {});
    cv::GaussianBlur(busy, busy, {}, 1.5); // face and room copied with one sharpness
    EXPECT_LT(judge({busy}), notKnown);
}

TEST_F(LivenessTest, bothCamerasTogetherMustHaveTheFaceAtOnePlace)
{
    const cv::Mat person = infrared();
    EXPECT_GE(judge({person, drawn::picture()}), living);
    EXPECT_GE(judge({person, drawn::picture({{350, 230}, 1.1, 0})}),
              living); // the cameras stand side by side
    EXPECT_EQ(judge({person, drawn::picture({{120, 200}, 0.9, 0})}), notKnown);
    EXPECT_EQ(judge({person, drawn::picture({{320, 220}, 0.5, 0})}), notKnown);
    EXPECT_EQ(judge({person, drawn::room(size, cv::Scalar::all(60)), drawn::picture()}),
              notKnown); // gone since
    EXPECT_LT(judge({person, heldSheet()}), notKnown);
}

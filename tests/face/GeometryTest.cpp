// Where the parts of the engine look, and what they cut out.
#include "DrawnFaces.h"
#include "FaceEngine.h"
#include "Similarity.h"

#include <gtest/gtest.h>

#include <cmath>

using face::Similarity;

TEST(FaceGeometry, cutsOutWhatTheSimilarityMapsOnto)
{
    // A ramp tells where a pixel comes from: across in red, down in green.
    cv::Mat ramp(250, 250, CV_8UC3);
    ramp.forEach<cv::Vec3b>([](cv::Vec3b& pixel, const int* at) {
        pixel = cv::Vec3b(static_cast<uchar>(at[1]), static_cast<uchar>(at[0]), 0);
    });
    for (const double scale : {0.5, 0.9, 1.0, 2.0, 3.3, 5.0}) {
        for (const double angle : {-0.4, 0.0, 0.3}) {
            const std::vector<cv::Point2f> square{{0, 0}, {30, 0}, {30, 30}, {0, 30}};
            std::vector<cv::Point2f> placed;
            for (const cv::Point2f p : square) {
                const double x = scale * (p.x - 15), y = scale * (p.y - 15);
                placed.emplace_back(static_cast<float>(x * std::cos(angle) - y * std::sin(angle) + 120),
                                    static_cast<float>(x * std::sin(angle) + y * std::cos(angle) + 130));
            }
            const Similarity ontoPicture = face::nearest(square, placed);
            EXPECT_NEAR(ontoPicture.scale(), scale, 1e-4);
            const cv::Mat piece = face::cutOut(ramp, ontoPicture, {30, 30});
            for (const cv::Point at : {cv::Point(15, 15), cv::Point(5, 20), cv::Point(27, 3)}) {
                const cv::Point2f truth = ontoPicture(at);
                const auto pixel = piece.at<cv::Vec3b>(at);
                // Half a level of rounding, twice, and the steps of a picture that was made smaller first.
                EXPECT_NEAR(pixel[0], truth.x, 1 + 0.1 * scale) << scale << " " << angle << at;
                EXPECT_NEAR(pixel[1], truth.y, 1 + 0.1 * scale) << scale << " " << angle << at;
            }
        }
    }
    const cv::Mat beyond = face::cutOut(ramp, {1, 0, 1000, 0}, {30, 30});
    EXPECT_EQ(cv::norm(beyond), 0);
}

TEST(FaceGeometry, everyLookOfTheDetectorHasTheSameFaceAtTheSamePlace)
{
    face::FaceDetector detector(face::Weights(FACE_MODELS "/tiny_face_detector_model-weights_manifest.json"));
    const drawn::Place place;
    const cv::Mat rgb = drawn::picture(place);
    for (int look = 0; look < face::FaceDetector::looks; ++look) {
        const auto found = detector.find(rgb, look);
        ASSERT_EQ(found.size(), 1U) << look;
        const cv::Point2d middle = (found[0].box.tl() + found[0].box.br()) / 2;
        EXPECT_LT(std::abs(middle.x - place.eyes.x), 25) << look;
        EXPECT_LT(std::abs(middle.y - place.eyes.y - 50), 50) << look;
    }
}

TEST(FaceGeometry, twoViewsOfAFaceAreDescribedNearlyAsOne)
{
    face::FaceEngine engine(FACE_MODELS);
    face::Recogniser recogniser(face::Weights(FACE_MODELS "/recogniser.json"));
    const cv::Mat rgb = drawn::picture();
    const auto faces = engine.find(rgb);
    ASSERT_EQ(faces.size(), 1U);
    const cv::Mat plain = recogniser.numbersOf({face::Recogniser::chipOf(rgb, faces[0].points)}).clone();
    const cv::Mat described = engine.describe(rgb, faces[0].points);
    EXPECT_NEAR(cv::norm(described), 1, 1e-4);
    EXPECT_GT(plain.dot(described) / cv::norm(plain), 0.96);
    EXPECT_LT(plain.dot(described) / cv::norm(plain), 0.9999); // but not as one
}

#include "FaceEngine.h"

namespace face {

namespace {

constexpr double largestMisfit = 0.25;

Weights weightsIn(const std::string& folder, const char* manifest)
{
    return Weights(folder + "/" + manifest);
}

} // namespace

FaceEngine::FaceEngine(const std::string& folder)
    : detector_(weightsIn(folder, "tiny_face_detector_model-weights_manifest.json")),
      landmarks_(weightsIn(folder, "face_landmark_68_model-weights_manifest.json")),
      recogniser_(weightsIn(folder, "recogniser.json"))
{
}

std::vector<Face> FaceEngine::find(const cv::Mat& rgb)
{
    std::vector<Face> faces;
    for (int look = 0; look < FaceDetector::looks && faces.empty(); ++look) {
        for (const FoundFace& found : detector_.find(rgb, look)) {
            Face face{found, {}};
            // Small pictures have patterns that only the detector takes for a face.
            if (landmarks_.find(rgb, found.box, face.points) &&
                Recogniser::misfit(face.points) < largestMisfit)
                faces.push_back(face);
        }
    }
    return faces;
}

cv::Mat FaceEngine::describe(const cv::Mat& rgb, const Landmarks& points)
{
    return recogniser_.describe(rgb, points);
}

} // namespace face

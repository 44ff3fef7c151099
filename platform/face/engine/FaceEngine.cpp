#include "FaceEngine.h"

#include "Picture.h"

#include <algorithm>

namespace face {

namespace {

struct Demand
{
    float confidence;
    double misfit;

    bool isMetBy(const Face& face) const
    {
        return face.found.confidence > confidence && Recogniser::misfit(face.points) < misfit;
    }
};

// The detector takes patterns of small pictures for faces; the points of these lie anywhere.
constexpr Demand forAFace{0.5F, 0.25};
// Blurred, dark or cut off faces. One pattern in a hundred pictures without a face gets through.
constexpr Demand forADoubtfulOne{0.3F, 0.14};

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

std::vector<Face> FaceEngine::look(const cv::Mat& rgb, int look, std::vector<Face>& doubtful)
{
    std::vector<Face> faces;
    for (const FoundFace& found : detector_.find(rgb, look)) {
        Face face{found, {}};
        if (!landmarks_.find(rgb, found.box, face.points))
            continue;
        if (forAFace.isMetBy(face))
            faces.push_back(face);
        else if (forADoubtfulOne.isMetBy(face))
            doubtful.push_back(face);
    }
    return faces;
}

std::vector<Face> FaceEngine::findIn(const cv::Mat& rgb, std::vector<Face>& doubtful)
{
    std::vector<Face> faces;
    for (int i = 0; i < FaceDetector::looks && faces.empty(); ++i)
        faces = look(rgb, i, doubtful);
    return faces;
}

std::vector<Face> FaceEngine::find(const cv::Mat& rgb)
{
    std::vector<Face> doubtful;
    std::vector<Face> faces = findIn(rgb, doubtful);
    if (const cv::Mat lit = faces.empty() ? lightened(rgb) : rgb; lit.data != rgb.data)
        faces = findIn(lit, doubtful);
    if (!faces.empty() || doubtful.empty())
        return faces;
    return {*std::max_element(doubtful.begin(), doubtful.end(), [](const Face& a, const Face& b) {
        return a.found.confidence < b.found.confidence;
    })};
}

cv::Mat FaceEngine::describe(const cv::Mat& rgb, const Landmarks& points)
{
    return recogniser_.describe(rgb, points);
}

} // namespace face

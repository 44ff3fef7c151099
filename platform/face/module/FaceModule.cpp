#include "FaceModule.h"

#include "FaceEngine.h"
#include "Liveness.h"

#include <algorithm>
#include <memory>

namespace {

using face::PictureView;

cv::Mat pixelsOf(const PictureView& picture)
{
    return {picture.height, picture.width, CV_8UC3, const_cast<unsigned char*>(picture.rgb)}; // only read
}

void fill(IdFaceInfo& info, const face::Face& face)
{
    info.left = face.found.box.x;
    info.top = face.found.box.y;
    info.width = face.found.box.width;
    info.height = face.found.box.height;
    info.confidence = face.found.confidence;
    info.pointCount = ID_FACE_POINTS;
    for (size_t i = 0; i < face.points.size(); ++i) {
        info.points[i][0] = face.points[i].x;
        info.points[i][1] = face.points[i].y;
    }
}

face::Landmarks pointsOf(const IdFaceInfo& info)
{
    static_assert(face::landmarkCount == ID_FACE_POINTS);
    face::Landmarks points;
    std::transform(std::begin(info.points),
                   std::end(info.points),
                   points.begin(),
                   [](const float(&point)[2]) { return cv::Point2f(point[0], point[1]); });
    return points;
}

class NetworkModule : public face::FaceModule
{
public:
    void begin(const std::string& weights) override
    {
        liveness_ = {};
        if (engine_ && weights == weights_)
            return;
        engine_.reset(); // not both at once
        engine_ = std::make_unique<face::FaceEngine>(weights);
        weights_ = weights;
    }

    int find(const PictureView& picture, IdFaceInfo& info) override
    {
        info = {};
        const cv::Mat pixels = pixelsOf(picture);
        const std::vector<face::Face> faces = engine_->find(pixels);
        if (faces.empty())
            liveness_.noFace(pixels);
        else
            fill(info, faces.front());
        return static_cast<int>(faces.size());
    }

    face::Descriptor describe(const PictureView& picture, const IdFaceInfo& info) override
    {
        const cv::Mat numbers = engine_->describe(pixelsOf(picture), pointsOf(info));
        face::Descriptor descriptor{};
        static_assert(face::Recogniser::length == std::tuple_size_v<face::Descriptor>);
        std::copy(numbers.begin<float>(), numbers.end<float>(), descriptor.begin());
        return descriptor;
    }

    int liveness(const PictureView& picture, const IdFaceInfo& info) override
    {
        return liveness_.judge(pixelsOf(picture), pointsOf(info));
    }

private:
    std::string weights_;
    std::unique_ptr<face::FaceEngine> engine_;
    face::Liveness liveness_;
};

} // namespace

extern "C" __attribute__((visibility("default"))) face::FaceModule* makeFaceModule()
{
    return new NetworkModule;
}

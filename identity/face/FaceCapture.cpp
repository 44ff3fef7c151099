#include "FaceCapture.h"

namespace {

constexpr int savedWidth = 640, savedHeight = 480;
constexpr int resizeMode = 0, plainColour = 0;
constexpr std::chrono::seconds patience(10);

} // namespace

FaceCapture::FaceCapture(MirvakCamera& camera, FaceCameras& cameras, FrameWait::Front front)
    : camera_(camera), cameras_(cameras), files_(camera, CaptureProcessor::FilesFor::ownerAlone),
      wait_(std::move(front))
{
}

FrameHandle FaceCapture::GetImageSync(FaceRole role, std::chrono::seconds timeout)
{
    cameras_.frames().want(role);
    return wait_.take(cameras_.frames().channel(), timeout);
}

QString FaceCapture::capture(FaceRole role)
{
    if (!cameras_.canServe(role))
        return {};
    const FrameHandle frame = GetImageSync(role, patience);
    if (!frame)
        return {};
    if (camera_.MirvakImage_GetWidth(frame.get()) != savedWidth ||
        camera_.MirvakImage_GetHeight(frame.get()) != savedHeight)
        camera_.MirvakImage_Resize(frame.get(), savedWidth, savedHeight, resizeMode);
    return files_.imageSave(frame.get(), cropping::none, plainColour);
}

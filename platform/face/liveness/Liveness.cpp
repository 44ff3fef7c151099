#include "Liveness.h"

namespace face {

int Liveness::judge(const cv::Mat&, const Landmarks&)
{
    return 0;
}

void Liveness::noFace(const cv::Mat&)
{
    infrared_.reset();
}

} // namespace face

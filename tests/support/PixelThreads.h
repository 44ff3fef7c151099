#pragma once

#include <opencv2/core/utility.hpp>

/// Under the thread sanitizer OpenCV works without its pool of threads: the pool's library is not
/// instrumented, so that every hand-over between its threads would be reported as a race.
inline void singleThreadedPixels()
{
#ifdef __SANITIZE_THREAD__
    cv::setNumThreads(1);
#endif
}

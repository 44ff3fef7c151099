#pragma once

#include "LookMatch.h"
#include "PageLook.h"
#include "PageScene.h"
#include "Reduction.h"

#include <chrono>

namespace mirvak {

/// Watches a stream of pictures for a new page that lies still. What it compares are reduced pictures of
/// slopes of brightness, block by block, so that light, exposure, a nudge or a breathing lens are no
/// difference and other words in the same lines are one. One thread at a time.
class PageCheck
{
public:
    using Time = std::chrono::steady_clock::time_point;

    struct Result
    {
        bool newPage = false; ///< true exactly once for each new page, when it has come to rest
        /// To the last page, 0 to 1; 1 when there was none. Of the last picture at rest while something
        /// moves.
        double difference = 1;
    };

    /// `threshold`: difference from which a page counts as new. `now`: when the picture was taken; the calls
    /// come in its order.
    Result check(const cv::Mat& rgb, double threshold, Time now);
    /// Forgets the last page: the next one that lies still is new.
    void reset();

private:
    bool isStill(Time now);
    bool isNew(double threshold, Time now);
    void remember();

    Reduction reduction_;
    PageLook now_, before_, page_;
    LookMatch sinceBefore_, sincePage_;
    PageScene scene_;
    double noise_ = 0;
    double difference_ = 1;
    Time beforeTaken_{}, restSince_{}, handSince_{};
    bool handInSight_ = false;
    bool judged_ = false; ///< what lies there has been compared with the last page since it moved
};

} // namespace mirvak

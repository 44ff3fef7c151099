#pragma once

#include "Reduction.h"

#include <opencv2/core.hpp>

namespace mirvak {

/// Watches a stream of pictures for a new page that lies still. Compares reduced pictures of local contrast,
/// so that flicker and automatic exposure, which change all brightness alike, are no difference. One thread
/// at a time.
class PageCheck
{
public:
    struct Result
    {
        bool newPage = false;  ///< true exactly once for each new page, when it has come to rest
        double difference = 0; ///< to the last page, 0 to 1; 1 when there was none
    };

    /// `threshold`: difference from which a page counts as new.
    Result check(const cv::Mat& rgb, double threshold);
    /// Forgets the last page: the next one that lies still is new.
    void reset();

private:
    void look(const cv::Mat& rgb);
    bool showsSomething() const;
    double differenceTo(const cv::Mat& other, int reach) const;

    Reduction reduction_;
    cv::Mat grey_, mean_;
    cv::Mat now_, before_, page_; ///< CV_32FC1, contrast against the surroundings; page_ empty: none yet
    int stillChecks_ = 0;
};

} // namespace mirvak

#include "Similarity.h"

#include <opencv2/imgproc.hpp>

double ssim(const cv::Mat& a, const cv::Mat& b)
{
    cv::Mat ma, mb, aa, bb, ab;
    const auto soft = [](const cv::Mat& from, cv::Mat& to) { cv::GaussianBlur(from, to, {11, 11}, 1.5); };
    soft(a, ma), soft(b, mb), soft(a.mul(a), aa), soft(b.mul(b), bb), soft(a.mul(b), ab);
    const double c1 = 6.5025, c2 = 58.5225;
    const cv::Mat top = (2 * ma.mul(mb) + c1).mul(2 * (ab - ma.mul(mb)) + c2);
    const cv::Mat below = (ma.mul(ma) + mb.mul(mb) + c1).mul(aa - ma.mul(ma) + bb - mb.mul(mb) + c2);
    return cv::mean(top / below)[0];
}

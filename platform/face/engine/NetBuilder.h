#pragma once

#include <opencv2/dnn.hpp>

#include <string>
#include <vector>

namespace face {

/// Filters as OpenCV wants them (out, in, rows, columns) from TensorFlow's (rows, columns, in, out).
cv::Mat filtersOf(const cv::Mat& tensorFlow);
/// The same for filters of one channel each: (channels, 1, rows, columns) from (rows, columns, channels, 1).
cv::Mat depthwiseFiltersOf(const cv::Mat& tensorFlow);

/// How a window of filters or a pool goes over a picture.
struct Window
{
    int stride = 1;
    int margin = 0;        ///< zeros on each side
    bool sameSize = false; ///< TensorFlow's "same": as many zeros as the size needs, the odd one at the end
};

/// Puts a network together, layer by layer. A layer is named by the number that made it; 0 is the input.
/// Filters and biases whose shapes do not fit throw BrokenWeights.
class NetBuilder
{
public:
    NetBuilder();

    int convolution(int from, const cv::Mat& filters, const cv::Mat& bias, Window window);
    /// Each channel by itself. `bias` may be empty.
    int depthwise(int from, const cv::Mat& filters, const cv::Mat& bias, Window window);
    /// x above zero, slope * x below.
    int leakyRelu(int from, float slope);
    /// The same with a slope of its own for each channel.
    int slopedRelu(int from, const cv::Mat& slopes);
    int maxPool(int from, int side, Window window);
    int meanPool(int from, int side, int stride);
    int sum(const std::vector<int>& from);
    /// `weights` are TensorFlow's (in, out).
    int dense(int from, const cv::Mat& weights, const cv::Mat& bias);

    cv::dnn::Net take();

private:
    int add(const std::string& type, cv::dnn::LayerParams& parameters, const std::vector<int>& from);
    int addConvolution(int from, const cv::Mat& filters, const cv::Mat& bias, Window window, int groups);

    cv::dnn::Net net_;
    int count_ = 0;
};

} // namespace face

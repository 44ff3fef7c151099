#pragma once

#include <opencv2/core.hpp>

#include <map>
#include <stdexcept>
#include <string>

namespace face {

/// Weights that are missing, cut short or not what a network needs. The text names the file or the weight.
class BrokenWeights : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The weights of a network: arrays of numbers with names, as TensorFlow.js writes them. A manifest in JSON
/// names the files beside it that hold them, with shapes and the form of the numbers (float32, float16, or
/// quantised to 8 or 16 bits with a scale and a minimum). A "crc32" beside the "paths", which is this
/// program's own addition, tells damage that leaves the length as it is.
class Weights
{
public:
    /// Throws BrokenWeights.
    explicit Weights(const std::string& manifest);

    /// CV_32F in the manifest's shape, but for a scalar, which has one dimension. Throws BrokenWeights.
    const cv::Mat& get(const std::string& name) const;

private:
    std::map<std::string, cv::Mat> arrays_;
};

} // namespace face

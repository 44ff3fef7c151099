#include "NetBuilder.h"

#include "Weights.h"

namespace face {

namespace {

constexpr int fourSides = 4;

void require(bool fits, const char* what)
{
    if (!fits)
        throw BrokenWeights(std::string("weights of another shape: ") + what);
}

// The array with its sides in another order: side i of the result is side order[i] of the given one.
cv::Mat reordered(const cv::Mat& array, const std::vector<int>& order)
{
    require(array.dims == fourSides, "filters");
    cv::Mat result;
    cv::transposeND(array, order, result);
    return result;
}

void setWindow(cv::dnn::LayerParams& parameters, Window window)
{
    parameters.set("stride", window.stride);
    if (window.sameSize)
        parameters.set("pad_mode", "SAME");
    else
        parameters.set("pad", window.margin);
}

} // namespace

cv::Mat filtersOf(const cv::Mat& tensorFlow)
{
    return reordered(tensorFlow, {3, 2, 0, 1});
}

cv::Mat depthwiseFiltersOf(const cv::Mat& tensorFlow)
{
    return reordered(tensorFlow, {2, 3, 0, 1});
}

NetBuilder::NetBuilder()
{
    net_.setInputsNames({"input"});
}

int NetBuilder::add(const std::string& type, cv::dnn::LayerParams& parameters, const std::vector<int>& from)
{
    parameters.type = type;
    parameters.name = type + std::to_string(++count_);
    const int id = net_.addLayer(parameters.name, type, parameters);
    for (size_t i = 0; i < from.size(); ++i)
        net_.connect(from[i], 0, id, static_cast<int>(i));
    return id;
}

int NetBuilder::addConvolution(
    int from, const cv::Mat& filters, const cv::Mat& bias, Window window, int groups)
{
    const int count = filters.size[0];
    require(bias.empty() || bias.total() == static_cast<size_t>(count), "a bias");
    cv::dnn::LayerParams parameters;
    parameters.set("kernel_h", filters.size[2]);
    parameters.set("kernel_w", filters.size[3]);
    parameters.set("num_output", count);
    parameters.set("group", groups);
    parameters.set("bias_term", !bias.empty());
    setWindow(parameters, window);
    parameters.blobs.push_back(filters);
    if (!bias.empty())
        parameters.blobs.push_back(bias);
    return add("Convolution", parameters, {from});
}

int NetBuilder::convolution(int from, const cv::Mat& filters, const cv::Mat& bias, Window window)
{
    return addConvolution(from, filtersOf(filters), bias, window, 1);
}

int NetBuilder::depthwise(int from, const cv::Mat& filters, const cv::Mat& bias, Window window)
{
    const cv::Mat ordered = depthwiseFiltersOf(filters);
    require(ordered.size[1] == 1, "depthwise filters");
    return addConvolution(from, ordered, bias, window, ordered.size[0]);
}

int NetBuilder::leakyRelu(int from, float slope)
{
    cv::dnn::LayerParams parameters;
    parameters.set("negative_slope", slope);
    return add("ReLU", parameters, {from});
}

int NetBuilder::slopedRelu(int from, const cv::Mat& slopes)
{
    cv::dnn::LayerParams parameters;
    parameters.blobs.push_back(slopes);
    return add("PReLU", parameters, {from});
}

int NetBuilder::maxPool(int from, int side, Window window)
{
    cv::dnn::LayerParams parameters;
    parameters.set("pool", "MAX");
    parameters.set("kernel_size", side);
    setWindow(parameters, window);
    return add("Pooling", parameters, {from});
}

int NetBuilder::meanPool(int from, int side, int stride)
{
    cv::dnn::LayerParams parameters;
    parameters.set("pool", "AVE");
    parameters.set("kernel_size", side);
    parameters.set("stride", stride);
    parameters.set("ceil_mode", false); // else the result's size is rounded up
    return add("Pooling", parameters, {from});
}

int NetBuilder::sum(const std::vector<int>& from)
{
    cv::dnn::LayerParams parameters;
    parameters.set("operation", "sum");
    return add("Eltwise", parameters, from);
}

int NetBuilder::dense(int from, const cv::Mat& weights, const cv::Mat& bias)
{
    require(weights.dims == 2 && bias.total() == static_cast<size_t>(weights.cols), "a dense layer");
    cv::dnn::LayerParams parameters;
    parameters.set("num_output", weights.cols);
    parameters.set("bias_term", true);
    parameters.set("axis", 1);
    parameters.blobs.push_back(weights.t());
    parameters.blobs.push_back(bias);
    return add("InnerProduct", parameters, {from});
}

cv::dnn::Net NetBuilder::take()
{
    net_.setPreferableBackend(cv::dnn::DNN_BACKEND_OPENCV);
    return net_;
}

} // namespace face

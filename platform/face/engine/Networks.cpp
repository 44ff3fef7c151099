#include "Networks.h"

#include "NetBuilder.h"

#include <string>

namespace face {

namespace {

constexpr Window plain{};
constexpr Window framed{1, 1};     // zeros around, so that 3 x 3 filters keep the size
constexpr Window half{2, 0, true}; // halves the size
constexpr int poolSide = 2;

// --- detector and landmarks: blocks of one package

int separable(NetBuilder& net, const Weights& weights, int from, const std::string& name, Window window)
{
    const int deep = net.depthwise(from, weights.get(name + "/depthwise_filter"), {}, window);
    return net.convolution(deep, weights.get(name + "/pointwise_filter"), weights.get(name + "/bias"), plain);
}

int ordinary(NetBuilder& net, const Weights& weights, int from, const std::string& name, Window window)
{
    return net.convolution(from, weights.get(name + "/filters"), weights.get(name + "/bias"), window);
}

int denseBlock(NetBuilder& net, const Weights& weights, int from, const std::string& name, bool isFirst)
{
    const int begin = isFirst ? ordinary(net, weights, from, name + "/conv0", half)
                              : separable(net, weights, from, name + "/conv0", half);
    std::vector<int> parts{net.leakyRelu(begin, 0)};
    int joined = parts.front();
    for (const char* layer : {"/conv1", "/conv2", "/conv3"}) {
        parts.push_back(separable(net, weights, joined, name + layer, framed));
        joined = net.leakyRelu(net.sum(parts), 0);
    }
    return joined;
}

// --- recogniser

class RecogniserBuilder
{
public:
    explicit RecogniserBuilder(const Weights& weights) : weights_(weights) {}

    cv::dnn::Net build()
    {
        int x = activated(convolution(0, body + "Conv2d_0", half), body + "Conv2d_0");
        x = activated(depthwise(x, body + "SeparableConv2d", framed), body + "SeparableConv2d");
        x = convolution(x, body + "Conv", plain);
        x = stage(x, "Conv2d_2", 5, half);
        x = stage(x, "Conv2d_3", 1, half);
        x = stage(x, "Conv2d_4", 6, framed);
        x = stage(x, "Conv2d_5", 1, half);
        x = stage(x, "Conv2d_6", 2, framed);
        x = activated(convolution(x, body + "Conv2d_7", plain), body + "Conv2d_7");
        x = depthwise(x, head + "SeparableConv2d", plain);
        x = convolution(x, head + "Conv", plain);
        convolution(x, head + "LinearConv1x1", plain);
        return net_.take();
    }

private:
    int convolution(int from, const std::string& name, Window window)
    {
        return net_.convolution(
            from, weights_.get(name + "/Conv2D_weights"), weights_.get(name + "/Conv2D_bn_offset"), window);
    }
    int depthwise(int from, const std::string& name, Window window)
    {
        return net_.depthwise(from,
                              weights_.get(name + "/depthwise_weights"),
                              weights_.get(name + "/depthwise_bn_offset"),
                              window);
    }
    int activated(int from, const std::string& name)
    {
        // Written as max(0, x) + mul * (x - |x|), which is 2 * mul * x below zero.
        return net_.slopedRelu(from, weights_.get(name + "/mul") * 2);
    }
    // Widened, looked at channel by channel, narrowed again (Sandler and others, "MobileNetV2", 2018).
    int bottleneck(int from, const std::string& name, Window window)
    {
        int x = activated(convolution(from, name + "Conv", plain), name + "Conv");
        x = activated(depthwise(x, name + "SeparableConv2d", window), name + "SeparableConv2d");
        return convolution(x, name + "Conv_1", plain);
    }
    // `count` bottlenecks; those that keep the size are added to what they began with.
    int stage(int from, const std::string& name, int count, Window first)
    {
        for (int i = 0; i < count; ++i) {
            const Window window = i == 0 ? first : framed;
            const int x = bottleneck(from, body + name + "_InvResBlock_" + std::to_string(i) + "/", window);
            from = window.stride == 1 ? net_.sum({x, from}) : x;
        }
        return from;
    }

    const std::string body = "MobileFaceNet/MobileFaceNet/";
    const std::string head = "MobileFaceNet/Logits/";
    const Weights& weights_;
    NetBuilder net_;
};

} // namespace

cv::dnn::Net detectorNet(const Weights& weights)
{
    constexpr float slope = 0.1F;
    constexpr int halvings = 4; // by pools, after the first; the fifth keeps the size
    NetBuilder net;
    int x = net.leakyRelu(ordinary(net, weights, 0, "conv0", plain), slope);
    x = net.maxPool(x, poolSide, half);
    for (int i = 1; i <= halvings + 1; ++i) {
        x = net.leakyRelu(separable(net, weights, x, "conv" + std::to_string(i), framed), slope);
        x = net.maxPool(x, poolSide, {i <= halvings ? 2 : 1, 0, true});
    }
    ordinary(net, weights, x, "conv8", plain);
    return net.take();
}

cv::dnn::Net landmarkNet(const Weights& weights)
{
    constexpr int lastSide = 7;
    NetBuilder net;
    int x = denseBlock(net, weights, 0, "dense0", true);
    for (const char* block : {"dense1", "dense2", "dense3"})
        x = denseBlock(net, weights, x, block, false);
    x = net.meanPool(x, lastSide, 2);
    net.dense(x, weights.get("fc/weights"), weights.get("fc/bias"));
    return net.take();
}

cv::dnn::Net recogniserNet(const Weights& weights)
{
    return RecogniserBuilder(weights).build();
}

} // namespace face

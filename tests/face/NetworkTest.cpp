// The networks' layers against plain loops in TensorFlow's order of things; the weights' file format.
#include "DrawnFaces.h"
#include "Input.h"
#include "NetBuilder.h"
#include "Recogniser.h"
#include "TempDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

using face::BrokenWeights;
using face::Weights;
using face::Window;

namespace {

cv::Mat numbers(const std::vector<int>& shape, int seed)
{
    cv::Mat array(static_cast<int>(shape.size()), shape.data(), CV_32F);
    cv::RNG(static_cast<unsigned>(seed)).fill(array, cv::RNG::UNIFORM, -1, 1);
    return array;
}

constexpr int rows = 9, columns = 6, channels = 3, filterCount = 4;
const cv::Mat input = numbers({1, channels, rows, columns}, 1);
const cv::Mat filters = numbers({3, 3, channels, filterCount}, 2);
const cv::Mat deepFilters = numbers({3, 3, channels, 1}, 3);
const cv::Mat bias = numbers({filterCount, 1}, 4), deepBias = numbers({channels, 1}, 5);
const cv::Mat dense = numbers({channels * rows * columns, 5}, 6), denseBias = numbers({5, 1}, 7);

float in(int c, int y, int x)
{
    return y < 0 || x < 0 || y >= rows || x >= columns ? 0 : input.ptr<float>(0, c, y)[x];
}
float filterAt(const cv::Mat& array, int y, int x, int i, int o)
{
    return array.ptr<float>(y, x, i)[o];
}
// Zeros before the first pixel: TensorFlow gives the odd one to the end.
int before(int side, const Window& window, int kernel)
{
    const int out = (side + window.stride - 1) / window.stride;
    return window.sameSize ? std::max(0, (out - 1) * window.stride + kernel - side) / 2 : window.margin;
}

struct Layer
{
    const char* name;
    int outChannels, kernel;
    Window window;
    std::function<void(face::NetBuilder&)> build;
    std::function<double(int o, int top, int left)> value;
};

double convolved(int o, int top, int left)
{
    double sum = bias.at<float>(o);
    for (int i = 0; i < channels * 9; ++i)
        sum += in(i / 9, top + i % 9 / 3, left + i % 3) * filterAt(filters, i % 9 / 3, i % 3, i / 9, o);
    return sum;
}
double deep(int o, int top, int left)
{
    double sum = deepBias.at<float>(o);
    for (int i = 0; i < 9; ++i)
        sum += in(o, top + i / 3, left + i % 3) * filterAt(deepFilters, i / 3, i % 3, o, 0);
    return sum;
}
double largest(int o, int top, int left)
{
    double value = -1e9;
    for (int i = 0; i < 4; ++i)
        if (top + i / 2 < rows && left + i % 2 < columns)
            value = std::max<double>(value, in(o, top + i / 2, left + i % 2));
    return value;
}
double mean(int o, int top, int left)
{
    return (in(o, top, left) + in(o, top, left + 1) + in(o, top + 1, left) + in(o, top + 1, left + 1)) / 4;
}
double sloped(double value, double slope)
{
    return value < 0 ? slope * value : value;
}

const Window once{}, framed{1, 1}, half{2, 0, true}, same{1, 0, true};
const std::vector<Layer> layers{
    {"convolution", 4, 3, once, [](auto& net) { net.convolution(0, filters, bias, once); }, convolved},
    {"framed", 4, 3, framed, [](auto& net) { net.convolution(0, filters, bias, framed); }, convolved},
    {"half", 4, 3, half, [](auto& net) { net.convolution(0, filters, bias, half); }, convolved},
    {"depthwise", 3, 3, half, [](auto& net) { net.depthwise(0, deepFilters, deepBias, half); }, deep},
    {"max", 3, 2, half, [](auto& net) { net.maxPool(0, 2, half); }, largest},
    {"max of the same size", 3, 2, same, [](auto& net) { net.maxPool(0, 2, same); }, largest},
    {"mean", 3, 2, {2}, [](auto& net) { net.meanPool(0, 2, 2); }, mean},
    {"leaky",
     3,
     1,
     once,
     [](auto& net) { net.leakyRelu(0, 0.1F); },
     [](int o, int y, int x) { return sloped(in(o, y, x), 0.1); }},
    {"sloped",
     3,
     1,
     once,
     [](auto& net) { net.slopedRelu(0, deepBias); },
     [](int o, int y, int x) { return sloped(in(o, y, x), deepBias.at<float>(o)); }},
    {"sum",
     3,
     1,
     once,
     [](auto& net) {
         net.sum({0, net.leakyRelu(0, 0)});
     },
     [](int o, int y, int x) { return in(o, y, x) + sloped(in(o, y, x), 0); }},
};

std::string manifest(const std::string& array, const std::string& more = "")
{
    return R"([{"weights": [{"name": "w", )" + array + R"(}], "paths": ["w.bin"])" + more + "}]";
}

} // namespace

TEST(Network, eachLayerIsWhatPlainLoopsSay)
{
    for (const Layer& layer : layers) {
        SCOPED_TRACE(layer.name);
        face::NetBuilder builder;
        layer.build(builder);
        cv::dnn::Net net = builder.take();
        net.setInput(input);
        const cv::Mat out = net.forward();
        const auto sideOf = [&](int side) {
            return layer.window.sameSize
                       ? (side + layer.window.stride - 1) / layer.window.stride
                       : (side + 2 * layer.window.margin - layer.kernel) / layer.window.stride + 1;
        };
        const int wanted[] = {1, layer.outChannels, sideOf(rows), sideOf(columns)};
        ASSERT_TRUE(std::equal(wanted, wanted + 4, out.size.p));
        for (int i = 0; i < static_cast<int>(out.total()); ++i) {
            const int x = i % out.size[3], y = i / out.size[3] % out.size[2],
                      o = i / out.size[3] / out.size[2];
            const int top = y * layer.window.stride - before(rows, layer.window, layer.kernel);
            const int left = x * layer.window.stride - before(columns, layer.window, layer.kernel);
            ASSERT_NEAR(out.ptr<float>()[i], layer.value(o, top, left), 1e-4) << o << " " << y << " " << x;
        }
    }
    face::NetBuilder builder;
    builder.dense(0, dense, denseBias);
    cv::dnn::Net net = builder.take();
    net.setInput(input);
    const cv::Mat out = net.forward();
    const cv::Mat truth = input.reshape(1, 1) * dense + denseBias.t();
    EXPECT_LT(cv::norm(out.reshape(1, 1), truth, cv::NORM_INF), 1e-4);
}

TEST(Network, describesAChipAsAnotherProgramOfTheSameNetworkDoes)
{
    cv::Mat chip(face::Recogniser::chipSide, face::Recogniser::chipSide, CV_8UC3);
    chip.forEach<cv::Vec3b>([](cv::Vec3b& pixel, const int* at) {
        const int y = at[0], x = at[1];
        pixel = cv::Vec3b(
            static_cast<uchar>(x * y), static_cast<uchar>(2 * x + y), static_cast<uchar>(x + 3 * y));
    });
    face::Recogniser recogniser(Weights(FACE_MODELS "/recogniser.json"));
    const cv::Mat found = recogniser.numbersOf({chip});
    const float truth[] = {-0.00383F, 0.07418F, -0.01978F, -0.03999F, 0.00053F, -0.08265F}; // each 32nd
    for (int i = 0; i < 6; ++i)
        EXPECT_NEAR(found.at<float>(32 * i) / cv::norm(found), truth[i], 1e-4) << i;
}

TEST(Network, readsEachFormOfNumbersAndRefusesWhatIsDamaged)
{
    const TempDir folder;
    const auto read = [&](const std::string& json, const std::string& bytes) {
        folder.write("w.bin", bytes);
        return Weights(folder.write("w.json", json)).get("w");
    };
    using namespace std::string_literals;
    const auto quantised = [](const char* form) {
        return R"("dtype": "float32", "quantization": {"dtype": ")"s + form +
               R"(", "scale": 0.5, "min": -1})";
    };
    const std::string two = R"("shape": [1, 2], )", plain = two + R"("dtype": "float32")";
    const std::string floats("\0\0\x80\x3f\0\0\0\xc0", 8); // 1, -2
    const cv::Mat expected = (cv::Mat_<float>(1, 2) << 1, -2);
    EXPECT_EQ(cv::norm(read(manifest(plain), floats), expected), 0);
    EXPECT_EQ(cv::norm(read(manifest(plain, R"(, "crc32": 3280414294)"), floats), expected), 0);
    EXPECT_EQ(cv::norm(read(manifest(two + quantised("float16")), "\0\x3c\0\xc0"s), expected), 0);
    EXPECT_EQ(cv::norm(read(manifest(two + quantised("uint8")), "\4\xfe"s), cv::Mat(cv::Matx12f(1, 126))), 0);
    EXPECT_EQ(cv::norm(read(manifest(two + quantised("uint16")), "\4\0\0\1"s), cv::Mat(cv::Matx12f(1, 127))),
              0);

    const std::string large = R"("dtype": "float32", "shape": [)";
    const std::vector<std::pair<std::string, std::string>> damaged{
        {manifest(plain), floats.substr(1)},                       // cut short
        {manifest(plain), floats + "\1"},                          // too long
        {manifest(plain), ""},                                     // gone
        {manifest(plain), "\0\0\x80\x3f\0\0\xc0\x7f"s},            // not a number
        {manifest(plain, R"(, "crc32": 1)"), floats},              // changed
        {manifest(large + "65536, 65536, 65536, 65536]"), floats}, // 2^64
        {manifest(large + "-1, -2]"), floats},
        {manifest(two + R"("dtype": "string")"), floats},
        {manifest(two + R"("dtype": 7)"), floats},
        {manifest(plain).substr(0, 40), floats},
        {"", floats},
        {"[[]]", floats},
        {R"([{"weights": [], "paths": []}])", floats}, // without "w"
    };
    for (const auto& [json, bytes] : damaged)
        EXPECT_THROW(read(json, bytes), BrokenWeights) << json;
}

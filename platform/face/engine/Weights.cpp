#include "Weights.h"

#include <nlohmann/json.hpp>
#include <zlib.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <vector>

namespace face {

namespace {

using nlohmann::json;

constexpr std::uint64_t mostBytes = 64U << 20U; // of one file; the networks of this kind have a few megabytes

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file || content.empty())
        throw BrokenWeights(path.substr(path.rfind('/') + 1) + " cannot be read");
    if (content.size() > mostBytes)
        throw BrokenWeights(path.substr(path.rfind('/') + 1) + " is too large");
    return content;
}

// How the numbers of an array are written: each is minimum + scale * what stands there.
struct NumberForm
{
    int type = CV_32F; ///< CV_16S stands for float16
    double scale = 1;
    double minimum = 0;
};

NumberForm formOf(const json& array)
{
    const json form = array.value("quantization", json::object());
    const std::string type = form.value("dtype", array.at("dtype").get<std::string>());
    if (type == "float32")
        return {CV_32F};
    if (type == "float16")
        return {CV_16S};
    if (type == "uint8" || type == "uint16")
        return {type == "uint8" ? CV_8U : CV_16U, form.at("scale"), form.at("min")};
    throw BrokenWeights("numbers of the unknown form " + type);
}

std::vector<int> shapeOf(const json& array)
{
    auto shape = array.at("shape").get<std::vector<int>>();
    if (shape.empty())
        shape.push_back(1);
    return shape;
}

// Bounded at each step, so that no product of forged sides overflows.
std::uint64_t countOf(const std::vector<int>& shape)
{
    std::uint64_t count = 1;
    for (const int side : shape) {
        if (side < 1 || count > mostBytes / static_cast<std::uint64_t>(side))
            throw BrokenWeights("an impossible shape");
        count *= static_cast<std::uint64_t>(side);
    }
    return count;
}

class ArrayReader
{
public:
    explicit ArrayReader(std::string bytes) : bytes_(std::move(bytes)) {}

    cv::Mat next(const json& array)
    {
        const std::vector<int> shape = shapeOf(array);
        const NumberForm form = formOf(array);
        const std::uint64_t length = countOf(shape) * static_cast<std::uint64_t>(CV_ELEM_SIZE1(form.type));
        if (length > bytes_.size() - at_)
            throw BrokenWeights("cut short");
        cv::Mat written(static_cast<int>(shape.size()), shape.data(), form.type);
        std::copy_n(bytes_.data() + at_, length, reinterpret_cast<char*>(written.data)); // aligned there
        at_ += length;
        return numbersOf(written, form);
    }

    bool atEnd() const { return at_ == bytes_.size(); }

private:
    static cv::Mat numbersOf(const cv::Mat& written, const NumberForm& form)
    {
        cv::Mat numbers;
        if (form.type == CV_16S)
            cv::convertFp16(written, numbers);
        else
            written.convertTo(numbers, CV_32F, form.scale, form.minimum);
        if (!cv::checkRange(numbers))
            throw BrokenWeights("numbers that are none");
        return numbers;
    }

    std::string bytes_;
    std::uint64_t at_ = 0;
};

void checkSum(const json& group, const std::string& bytes)
{
    if (!group.contains("crc32"))
        return;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size()));
    if (sum != group.at("crc32").get<std::uint32_t>())
        throw BrokenWeights("damaged: the check sum differs");
}

void readGroup(const json& group, const std::string& folder, std::map<std::string, cv::Mat>& arrays)
{
    std::string bytes;
    for (const json& path : group.at("paths"))
        bytes += contentOf(folder + path.get<std::string>());
    checkSum(group, bytes);
    ArrayReader reader(std::move(bytes));
    for (const json& array : group.at("weights"))
        arrays[array.at("name")] = reader.next(array);
    if (!reader.atEnd())
        throw BrokenWeights("longer than the manifest says");
}

} // namespace

Weights::Weights(const std::string& manifest)
{
    try {
        const std::string folder = manifest.substr(0, manifest.rfind('/') + 1);
        for (const json& group : json::parse(contentOf(manifest)))
            readGroup(group, folder, arrays_);
    } catch (const BrokenWeights& error) {
        throw BrokenWeights(manifest + ": " + error.what());
    } catch (const json::exception& error) {
        throw BrokenWeights(manifest + ": " + error.what());
    }
}

const cv::Mat& Weights::get(const std::string& name) const
{
    const auto found = arrays_.find(name);
    if (found == arrays_.end())
        throw BrokenWeights("no weights with the name " + name);
    return found->second;
}

} // namespace face

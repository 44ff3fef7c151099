#include "GlyphBook.h"

#include "GlyphFeatures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <numeric>

namespace mirvak {

namespace {

// The file: this head, the projection (float), the characters (32 bits each), the means (8 bits each); the
// least significant byte first.
struct Head
{
    std::array<char, 8> kind;
    std::uint32_t dimensions, characters;
    float unit;
};

constexpr std::array<char, 8> kind{'g', 'l', 'y', 'p', 'h', 's', '0', '1'};
constexpr std::uint32_t mostDimensions = 512, mostCharacters = 100000;
constexpr int lanes = 8;
constexpr int finest = 127; // steps of a mean, each way

bool readInto(std::ifstream& file, void* to, size_t bytes)
{
    return static_cast<bool>(file.read(static_cast<char*>(to), static_cast<std::streamsize>(bytes)));
}

template <class T> void write(std::ofstream& file, const T* from, size_t count)
{
    file.write(reinterpret_cast<const char*>(from), static_cast<std::streamsize>(count * sizeof(T)));
}

} // namespace

std::optional<GlyphBook> GlyphBook::load(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    Head head{};
    if (!readInto(file, &head, sizeof head) || head.kind != kind || head.dimensions == 0 ||
        head.dimensions > mostDimensions || head.characters == 0 || head.characters > mostCharacters ||
        !std::isfinite(head.unit) || head.unit <= 0)
        return std::nullopt;
    const int dimensions = static_cast<int>(head.dimensions);
    GlyphBook book;
    book.unit_ = static_cast<double>(head.unit);
    book.projection_.create(glyphFeatures + 1, dimensions, CV_32F);
    book.means_.create(static_cast<int>(head.characters), dimensions, CV_8S);
    std::vector<std::uint32_t> characters(head.characters);
    if (!readInto(file, book.projection_.data, book.projection_.total() * sizeof(float)) ||
        !readInto(file, characters.data(), characters.size() * sizeof characters[0]) ||
        !readInto(file, book.means_.data, book.means_.total()) || !cv::checkRange(book.projection_))
        return std::nullopt;
    for (const std::uint32_t character : characters) {
        book.indexes_.emplace(character, book.characters_.size());
        book.characters_.push_back(character);
    }
    return book;
}

bool GlyphBook::save(const std::string& path,
                     const cv::Mat& projection,
                     const cv::Mat& means,
                     const std::vector<char32_t>& characters)
{
    double least = 0, most = 0;
    cv::minMaxLoc(means, &least, &most);
    const double unit = std::max(-least, most) / finest;
    cv::Mat steps;
    means.convertTo(steps, CV_8S, 1 / unit);
    const Head head{kind,
                    static_cast<std::uint32_t>(means.cols),
                    static_cast<std::uint32_t>(means.rows),
                    static_cast<float>(unit)};
    const std::vector<std::uint32_t> codes(characters.begin(), characters.end());
    std::ofstream file(path, std::ios::binary);
    write(file, &head, 1);
    write(file, projection.ptr<float>(), projection.total());
    write(file, codes.data(), codes.size());
    write(file, steps.ptr<signed char>(), steps.total());
    return static_cast<bool>(file.flush());
}

cv::Mat GlyphBook::place(const cv::Mat& features) const
{
    return features * projection_.rowRange(0, glyphFeatures) + projection_.row(glyphFeatures);
}

double GlyphBook::distanceTo(const cv::Mat& place, size_t index) const
{
    const auto* from = place.ptr<float>();
    const auto* mean = means_.ptr<signed char>(static_cast<int>(index));
    const auto unit = static_cast<float>(unit_);
    std::array<float, lanes> sums{}; // side by side, as the processor can
    int i = 0;
    for (; i + lanes <= means_.cols; i += lanes) {
        for (int lane = 0; lane < lanes; ++lane) {
            const float off = from[i + lane] - unit * static_cast<float>(mean[i + lane]);
            sums[static_cast<size_t>(lane)] += off * off;
        }
    }
    for (; i < means_.cols; ++i) {
        const float off = from[i] - unit * static_cast<float>(mean[i]);
        sums[0] += off * off;
    }
    return static_cast<double>(std::accumulate(sums.begin(), sums.end(), 0.0F));
}

std::vector<GlyphBook::Near> GlyphBook::nearest(const cv::Mat& place, size_t count) const
{
    std::vector<Near> all(characters_.size());
    for (size_t i = 0; i < all.size(); ++i)
        all[i] = {characters_[i], distanceTo(place, i)};
    count = std::min(count, all.size());
    std::partial_sort(all.begin(),
                      all.begin() + static_cast<std::ptrdiff_t>(count),
                      all.end(),
                      [](const Near& a, const Near& b) { return a.distance < b.distance; });
    all.resize(count);
    return all;
}

std::optional<double> GlyphBook::distance(const cv::Mat& place, char32_t character) const
{
    const auto found = indexes_.find(character);
    if (found == indexes_.end())
        return std::nullopt;
    return distanceTo(place, found->second);
}

} // namespace mirvak

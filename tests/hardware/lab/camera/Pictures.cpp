#include "Pictures.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace lab {

Pictures::Pictures(const std::string& folder)
{
    std::set<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.insert(entry.path());
    for (const std::filesystem::path& path : files) {
        const std::string name = path.filename().string();
        std::ifstream file(path, std::ios::binary);
        filesBySize_[name.substr(0, name.find('_'))].emplace_back(std::istreambuf_iterator<char>(file),
                                                                  std::istreambuf_iterator<char>());
    }
}

Bytes Pictures::jpeg(FrameSize size, unsigned n) const
{
    const auto files = filesBySize_.find(std::to_string(size.width) + "x" + std::to_string(size.height));
    return files == filesBySize_.end() ? Bytes() : files->second[n % files->second.size()];
}

Bytes Pictures::yuyv(FrameSize size, unsigned n)
{
    constexpr std::uint8_t u = 150, v = 100;
    Bytes pixels;
    pixels.reserve(std::size_t(size.width) * size.height * 2);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            pixels.push_back((x + y + 4 * n) & 0xff);
            pixels.push_back(x % 2 == 0 ? u : v);
        }
    }
    return pixels;
}

} // namespace lab

#include "TempDir.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

TempDir::TempDir()
{
    std::string name = (std::filesystem::temp_directory_path() / "lumro-test-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no temporary folder");
    path_ = name;
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::write(const std::string& name, const std::string& text) const
{
    std::string path = file(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::string TempDir::contentOf(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> TempDir::names() const
{
    std::vector<std::string> all;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        all.push_back(entry.path().filename());
    std::sort(all.begin(), all.end());
    return all;
}

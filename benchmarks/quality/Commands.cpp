#include "Commands.h"

#include <opencv2/imgproc.hpp>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// A folder that goes with it.
class Scratch
{
public:
    Scratch()
    {
        std::string name = (fs::temp_directory_path() / "quality-XXXXXX").string();
        folder_ = mkdtemp(name.data()) ? name : "";
    }
    ~Scratch()
    {
        std::error_code ignored;
        if (!folder_.empty())
            fs::remove_all(folder_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    std::string file(const char* name) const { return (folder_ / name).string(); }

private:
    fs::path folder_;
};

void write(const std::string& path, const cv::Mat& picture)
{
    std::ofstream file(path, std::ios::binary);
    file << (picture.channels() == 3 ? "P6" : "P5") << '\n'
         << picture.cols << ' ' << picture.rows << "\n255\n";
    for (int y = 0; y < picture.rows; ++y)
        file.write(reinterpret_cast<const char*>(picture.ptr(y)),
                   static_cast<std::streamsize>(picture.cols) * picture.channels());
}

int number(std::istream& file)
{
    while (std::isspace(file.peek()) || file.peek() == '#') {
        if (file.get() == '#')
            file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    int value = 0;
    file >> value;
    return value;
}

/// P4 is one bit a pixel, black is 1, rows of whole bytes.
cv::Mat unpacked(std::istream& file, int width, int height)
{
    cv::Mat picture(height, width, CV_8UC1);
    std::vector<char> row(static_cast<size_t>((width + 7) / 8));
    for (int y = 0; y < height; ++y) {
        file.read(row.data(), static_cast<std::streamsize>(row.size()));
        for (int x = 0; x < width; ++x)
            picture.ptr(y)[x] = (row[static_cast<size_t>(x / 8)] >> (7 - x % 8) & 1) ? 0 : 255;
    }
    return picture;
}

cv::Mat read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    char letter = 0, kind = 0;
    file >> letter >> kind;
    const int width = number(file), height = number(file);
    if (!file || letter != 'P' || width < 1 || height < 1)
        return {};
    if (kind == '4') {
        file.get();
        return unpacked(file, width, height);
    }
    const int most = number(file);
    file.get();
    if (most != 255 || (kind != '5' && kind != '6'))
        return {};
    cv::Mat picture(height, width, kind == '6' ? CV_8UC3 : CV_8UC1);
    file.read(reinterpret_cast<char*>(picture.data),
              static_cast<std::streamsize>(picture.total() * picture.elemSize()));
    return picture;
}

void replaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

} // namespace

namespace commands {

bool isThere(const std::string& program)
{
    return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
}

cv::Mat run(const std::string& line, const cv::Mat& picture)
{
    const Scratch scratch;
    write(scratch.file("in.pnm"), picture);
    std::string command = line;
    replaceAll(command, "%in", scratch.file("in.pnm"));
    replaceAll(command, "%out", scratch.file("out.pnm"));
    if (std::system((command + " >/dev/null 2>&1").c_str()) != 0)
        return {};
    return read(scratch.file("out.pnm"));
}

} // namespace commands

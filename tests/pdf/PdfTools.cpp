#include "PdfTools.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tools {

namespace {

std::string quoted(const std::string& path)
{
    return "'" + path + "'";
}

} // namespace

bool areInstalled()
{
    return run("command -v qpdf && command -v pdftoppm").find("exit") == std::string::npos;
}

std::string complaints(const std::string& pdf)
{
    const std::string said = run("qpdf --check " + quoted(pdf));
    const bool isFine = said.find("No syntax or stream encoding errors found") != std::string::npos &&
                        said.find("WARNING") == std::string::npos && said.find("exit") == std::string::npos;
    return isFine ? "" : said;
}

cv::Mat rendered(const std::string& pdf, int page)
{
    const std::string number = std::to_string(page);
    const std::string ppm = run("pdftoppm -r 72 -aa no -f " + number + " -l " + number + " " + quoted(pdf));
    std::istringstream in(ppm);
    std::string magic;
    int width = 0, height = 0, most = 0;
    in >> magic >> width >> height >> most;
    in.get();
    if (magic != "P6" || most != 255)
        return {};
    cv::Mat picture(height, width, CV_8UC3);
    in.read(reinterpret_cast<char*>(picture.data), static_cast<std::streamsize>(picture.total() * 3));
    return in ? picture : cv::Mat();
}

std::vector<std::string> pageSizes(const std::string& pdf)
{
    std::istringstream said(run("pdfinfo -l -1 " + quoted(pdf)));
    std::vector<std::string> sizes;
    for (std::string line; std::getline(said, line);) {
        const size_t at = line.find("size:");
        const size_t end = line.find(" pts");
        if (line.rfind("Page ", 0) == 0 && end != std::string::npos)
            sizes.push_back(
                line.substr(line.find_first_not_of(' ', at + 5), end - line.find_first_not_of(' ', at + 5)));
    }
    return sizes;
}

std::vector<mirvak::Bytes> jpegStreams(const std::string& pdf, const std::string& emptyFolder)
{
    run("pdfimages -all " + quoted(pdf) + " " + quoted(emptyFolder + "/picture"));
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(emptyFolder))
        names.push_back(entry.path().string());
    std::sort(names.begin(), names.end());
    std::vector<mirvak::Bytes> streams;
    for (const std::string& name : names) {
        if (name.find(".jpg") != std::string::npos)
            streams.push_back(contents(name));
    }
    return streams;
}

mirvak::Bytes contents(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return mirvak::Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void write(const std::string& path, const mirvak::Bytes& bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

} // namespace tools

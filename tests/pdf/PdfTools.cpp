#include "PdfTools.h"

#include "TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace tools {

namespace {

std::string quoted(const std::string& path)
{
    return "'" + path + "'";
}

/// What a program of qpdf or of the poppler utilities says.
std::string ask(const std::string& command)
{
    static const bool areInstalled =
        run("command -v qpdf && command -v pdftoppm").find("exit") == std::string::npos;
    EXPECT_TRUE(areInstalled) << "needs the packages qpdf and poppler-utils";
    return run(command);
}

/// Of an attribute: name="12.5".
double number(const std::string& line, const std::string& name)
{
    const size_t at = line.find(name + "=\"");
    return at == std::string::npos ? -1 : std::strtod(line.c_str() + at + name.size() + 2, nullptr);
}

} // namespace

std::string complaints(const std::string& pdf)
{
    const std::string said = ask("qpdf --check " + quoted(pdf));
    const bool isFine = said.find("No syntax or stream encoding errors found") != std::string::npos &&
                        said.find("WARNING") == std::string::npos && said.find("exit") == std::string::npos;
    return isFine ? "" : said;
}

cv::Mat rendered(const std::string& pdf, int page)
{
    const std::string number = std::to_string(page);
    const std::string ppm = ask("pdftoppm -r 72 -aa no -f " + number + " -l " + number + " " + quoted(pdf));
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
    std::istringstream said(ask("pdfinfo -l -1 " + quoted(pdf)));
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

std::string textOf(const std::string& pdf, const std::string& options)
{
    return ask("pdftotext " + options + " " + quoted(pdf) + " -");
}

std::string linesOf(const std::string& pdf)
{
    std::string text = textOf(pdf);
    text.erase(std::unique(text.begin(), text.end(), [](char a, char b) { return a == '\n' && b == '\n'; }),
               text.end());
    return text;
}

std::vector<SeenWord> wordsOf(const std::string& pdf, int page)
{
    const std::string only = std::to_string(page);
    const std::string said = textOf(pdf, "-bbox -f " + only + " -l " + only);
    std::istringstream lines(said);
    std::vector<SeenWord> words;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("<word ") == std::string::npos)
            continue;
        const size_t text = line.find('>') + 1;
        const cv::Point2d from(number(line, "xMin"), number(line, "yMin"));
        const cv::Point2d to(number(line, "xMax"), number(line, "yMax"));
        words.push_back({line.substr(text, line.find("</word>") - text), {from, to}});
    }
    return words;
}

std::vector<mirvak::Bytes> jpegStreams(const std::string& pdf)
{
    const TempDir folder;
    ask("pdfimages -all " + quoted(pdf) + " " + quoted(folder.file("picture")));
    std::vector<mirvak::Bytes> streams;
    for (const std::string& name : folder.names()) {
        const std::string bytes = folder.content(name);
        if (name.find(".jpg") != std::string::npos)
            streams.emplace_back(bytes.begin(), bytes.end());
    }
    return streams;
}

} // namespace tools

#pragma once

#include "Codec.h"
#include "Command.h"

#include <opencv2/core.hpp>

#include <string>
#include <vector>

/// What other programs make of a PDF file.
namespace tools {

/// Empty when the checker of the qpdf package has nothing to say against the file.
std::string complaints(const std::string& pdf);

/// The page as seen, RGB, one pixel a point.
cv::Mat rendered(const std::string& pdf, int page = 1);

/// "WIDTH x HEIGHT" in points of each page.
std::vector<std::string> pageSizes(const std::string& pdf);

/// The text of the whole file, as `pdftotext` puts it together with these options.
std::string textOf(const std::string& pdf, const std::string& options = "");
/// The same without empty lines.
std::string linesOf(const std::string& pdf);

struct SeenWord
{
    std::string text;
    cv::Rect2d box; ///< points from the top left
};
/// As a viewer marks them.
std::vector<SeenWord> wordsOf(const std::string& pdf, int page = 1);

/// The JPEG streams of the file as they lie in it, in page order.
std::vector<mirvak::Bytes> jpegStreams(const std::string& pdf);

} // namespace tools

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

/// The JPEG streams of the file as they lie in it, in page order.
std::vector<mirvak::Bytes> jpegStreams(const std::string& pdf);

} // namespace tools

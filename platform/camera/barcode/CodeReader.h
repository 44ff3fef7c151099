#pragma once

#include "Symbology.h"

#include <opencv2/core.hpp>

#include <functional>
#include <string>
#include <vector>

namespace mirvak {

/// Told ten times a second how far the reading has come, 0 to 1, and at the end that it is done; false: stop.
using CodeWatch = std::function<bool(double share)>;

/// A code that was read in a picture.
struct Code
{
    std::string text; ///< valid UTF-8 without NUL, see PayloadText.h
    Symbology symbology;
    cv::Rect2f box; ///< the upright rectangle around it, pixels
};

/// Reads all bar and matrix codes of a picture, whichever way they are turned. The whole picture is looked at
/// first; then the places that look like codes, each as an upright picture of its own, because most decoders
/// read only upright codes and some only those in the middle; then, harder, those that still say nothing.
/// Decoding happens in helper processes, which run only as long as read() does. One thread at a time; several
/// readers may work at once.
class CodeReader
{
public:
    /// `helper` is the path of the decoding program.
    explicit CodeReader(std::string helper) : helper_(std::move(helper)) {}

    /// `rgb` is CV_8UC3. The codes from top to bottom, those side by side from left to right.
    /// Ends soon, with what has been read until then, when `goesOn` says no.
    std::vector<Code> read(const cv::Mat& rgb, const CodeWatch& goesOn = {}) const;

private:
    std::string helper_;
};

} // namespace mirvak

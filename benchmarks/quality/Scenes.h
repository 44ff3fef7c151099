#pragma once

#include <opencv2/core.hpp>

#include <string>
#include <vector>

/// A page under a camera, of which everything is known.
struct Scene
{
    std::string name;
    cv::Mat photo; ///< CV_8UC3, RGB: what the camera delivers; the page fills it
    cv::Mat truth; ///< the same place of the page itself, white paper: no light, no lens, no noise
    cv::Mat ink;   ///< CV_8U, 255: strokes, each up to half of its own darkness
    cv::Mat half;  ///< CV_8U: the level half way between paper and the darkest of the stroke that is near
    cv::Mat paper; ///< CV_8U, 255: nothing is printed there or near
    cv::Mat print; ///< CV_8U, 255: coloured print: areas, seals, highlighter
    // Sealed pages only, CV_8U, 255; truth and ink are those of the page without seals.
    cv::Mat seal;     ///< strong ink of a seal, and no text
    cv::Mat crossing; ///< text that a seal lies over
    cv::Mat bare;     ///< no seal is near
};

/// Pages of the desk and a page with all that is hard (thin grey print, pencil, tinted boxes, highlighter, a
/// photograph), under lamps, shadows, casts and noise of `seed`. RGB.
std::vector<Scene> makeScenes(int count, cv::Size size, unsigned seed);

/// A page that lies on a desk, turned, all of it in the picture.
struct TurnedPage
{
    cv::Mat photo; ///< CV_8UC3, RGB
    cv::Mat ink;   ///< CV_8U, 255: where in the photograph the page's print lies
};

/// Pages of text, some of them printed up to 4 mm from the edge, turned by up to 6 degrees.
std::vector<TurnedPage> makeTurnedPages(int count, cv::Size size, unsigned seed);

/// English, Chinese and Russian text under seals of any hue of blue or red, strong and pale. RGB.
std::vector<Scene> makeSealedScenes(int count, cv::Size size, unsigned seed, bool isBlue);

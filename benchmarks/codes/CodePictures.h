#pragma once

#include <opencv2/core.hpp>

#include <string>
#include <vector>

/// A code that lies on a picture.
struct LaidCode
{
    std::string name; ///< of its kind
    std::string text;
};

/// A picture with known codes on it.
struct CodePicture
{
    std::string condition;
    cv::Mat grey; ///< CV_8UC1
    std::vector<LaidCode> codes;
};

/// Pictures of every condition in turn: `count` of them, each with several codes of random kinds, sizes of
/// two to four pixels a module, places and turns. The same for the same seed.
class CodePictures
{
public:
    explicit CodePictures(unsigned seed) : random_(seed) {}
    CodePicture next();
    /// A hasty photograph of one label with a one-dimensional code and digits below it: at a slant, blurred
    /// by lens and hand, of 1.2 to 3.5 pixels a module, unevenly lit, noisy. The condition is the code's
    /// kind.
    CodePicture nextLabel();

private:
    cv::RNG random_;
    size_t made_ = 0;
};

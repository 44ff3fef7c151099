#pragma once

#include "pages/Pages.h"

#include <opencv2/core.hpp>

#include <string>

/// What lies on a desk.
namespace papers {

struct Paper
{
    std::string name;
    deskpictures::FlatPage page;
    double thicknessMm = 0.3; ///< how far its edges stand above the desk; paper is never quite flat
};

constexpr int kinds = 14;
/// One of the kinds; what is drawn the same each time is drawn once.
Paper make(int kind, cv::RNG& random);

} // namespace papers

#pragma once

#include "Image.h"
#include "pages/Pages.h"

#include <vector>

/// What has become of a page before it is read.
struct Look
{
    const char* name;
    mirvak::Image (*take)(const deskpictures::FlatPage& page, unsigned seed);
};

/// A camera's picture and scans: clean, noisy, askew, of low resolution, of a faded ribbon.
const std::vector<Look>& looks();

#pragma once

#include "Marks.h"
#include "Models.h"

namespace mirvak {

/// How a page was understood at a first glance.
struct Glance
{
    TextModel* model = nullptr; ///< null when no model could be loaded
    double confidence = 0;      ///< 0 to 100, with which it reads the sample
};

/// Reads a few rows of the page with one model after the other, first with those whose letters look like the
/// page's. The first that reads them surely is taken, otherwise the one that reads them best.
Glance chooseLanguage(const cv::Mat& grey, const Marks& marks, Models& models, const Limit& limit);

/// Whether the glance leaves no doubt of language and direction.
bool isSure(const Glance& glance);

/// A part of the page with white around it.
cv::Mat cutOut(const cv::Mat& grey, const cv::Rect& part, int margin);

} // namespace mirvak

// Several sheets side by side on one desk, with their corners known.
#pragma once

#include "MadePages.h"

#include <string>
#include <vector>

namespace made {

struct ManySheets
{
    std::string name;
    cv::Mat picture;
    std::vector<Corners> truth; ///< in reading order
};

constexpr int sheetSceneKinds = 12;
/// One of the scenes: two to nine cards, turned anyhow or in rows, receipts, A5 sheets, a mixture.
ManySheets manySheets(int kind, Desk ground, unsigned seed = 1);

} // namespace made

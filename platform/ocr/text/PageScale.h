#pragma once

#include "ReadPage.h"

namespace mirvak {

/// From pixels of a page to twips of its document. A camera stamps the same resolution on all its pictures,
/// however far the page was away: where it makes the text smaller or larger than print is, the page is
/// scaled so that the text has a usual size.
class PageScale
{
public:
    PageScale(const ReadPage& page, double bodyEm);

    int twips(double px) const;
    int halfPoints(double em) const;

private:
    double twipsPerPx_;
};

} // namespace mirvak

#pragma once

#include "camera/Photograph.h"
#include "pages/Pages.h"

#include <functional>
#include <vector>

namespace deskpictures {

/// One picture of the document camera: a page and the scene in which it lies.
struct Exhibit
{
    const char* name; ///< file name without number and ending, such as "letter"
    Scene scene;
    std::function<FlatPage()> draw; ///< empty: the open book, which is two pages
};

/// The pictures in the order in which the desk shows them.
const std::vector<Exhibit>& catalogue();

} // namespace deskpictures

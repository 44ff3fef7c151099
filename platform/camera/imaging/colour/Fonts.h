#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>
#include <vector>

namespace mirvak {

struct CloseLibrary
{
    void operator()(FT_Library library) const noexcept { FT_Done_FreeType(library); }
};
struct CloseFace
{
    void operator()(FT_Face face) const noexcept { FT_Done_Face(face); }
};
using FontLibrary = std::unique_ptr<FT_LibraryRec_, CloseLibrary>;
using FontFace = std::unique_ptr<FT_FaceRec_, CloseFace>;

/// The installed fonts, asked for character by character: the plain sans-serif font first, and whichever font
/// has the character where that one lacks it. One thread.
class Fonts
{
public:
    explicit Fonts(int pixelSize);

    /// False when no font is installed at all.
    bool isValid() const { return !faces_.empty(); }
    /// A face that has the character; the first font when none has. Belongs to this object.
    FT_Face faceFor(char32_t character);

private:
    FT_Face open(char32_t character);

    FontLibrary library_;
    std::vector<FontFace> faces_; ///< declared after the library, which must outlive them
    int pixelSize_;
};

} // namespace mirvak

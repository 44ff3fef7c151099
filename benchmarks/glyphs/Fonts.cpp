#include "Fonts.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <iconv.h>

#include <array>
#include <cstdlib>

struct Face::Handles
{
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    int size = 0;
    ~Handles()
    {
        if (face)
            FT_Done_Face(face);
        if (library)
            FT_Done_FreeType(library);
    }
};

Face::Face(std::unique_ptr<Handles> handles) : handles_(std::move(handles)) {}

Face::~Face() = default;

std::unique_ptr<Face> Face::open(const std::string& name)
{
    const size_t colon = name.rfind(':');
    const std::string file = name.substr(0, colon);
    const long index = colon == std::string::npos ? 0 : std::atol(name.c_str() + colon + 1);
    auto handles = std::make_unique<Handles>();
    if (FT_Init_FreeType(&handles->library) != 0 ||
        FT_New_Face(handles->library, file.c_str(), index, &handles->face) != 0)
        return nullptr;
    return std::unique_ptr<Face>(new Face(std::move(handles)));
}

cv::Mat Face::draw(char32_t character, int emPx)
{
    FT_Face face = handles_->face;
    if (handles_->size != emPx && FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(emPx)) != 0)
        return {};
    handles_->size = emPx;
    const FT_UInt glyph = FT_Get_Char_Index(face, character);
    if (glyph == 0 || FT_Load_Glyph(face, glyph, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) != 0 ||
        FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL) != 0)
        return {};
    const FT_Bitmap& bitmap = face->glyph->bitmap;
    if (bitmap.width == 0 || bitmap.rows == 0)
        return {};
    const cv::Mat ink(static_cast<int>(bitmap.rows),
                      static_cast<int>(bitmap.width),
                      CV_8UC1,
                      bitmap.buffer,
                      static_cast<size_t>(bitmap.pitch));
    return 255 - ink;
}

std::vector<char32_t> commonIdeographs()
{
    std::vector<char32_t> characters;
    const iconv_t converter = iconv_open("UTF-32LE", "GB2312");
    if (converter == reinterpret_cast<iconv_t>(-1))
        return characters;
    for (int row = 0xb0; row <= 0xf7; ++row) {
        for (int cell = 0xa1; cell <= 0xfe; ++cell) {
            std::array<char, 2> from{static_cast<char>(row), static_cast<char>(cell)};
            char32_t character = 0;
            char *in = from.data(), *out = reinterpret_cast<char*>(&character);
            size_t inLeft = from.size(), outLeft = sizeof character;
            if (iconv(converter, &in, &inLeft, &out, &outLeft) == 0 && outLeft == 0)
                characters.push_back(character);
        }
    }
    iconv_close(converter);
    return characters;
}

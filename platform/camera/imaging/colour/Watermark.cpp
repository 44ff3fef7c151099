#include "Watermark.h"

#include "Fonts.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double baselineShare =
    0.8; // of the font size below the anchor: fits Latin capitals and Han squares
constexpr char32_t replacement = 0xfffd;

/// Reads one character after the other (RFC 3629).
class Utf8Reader
{
public:
    explicit Utf8Reader(const std::string& text) : text_(text) {}

    bool atEnd() const { return at_ >= text_.size(); }
    char32_t next()
    {
        const auto first = static_cast<unsigned char>(text_[at_++]);
        if (first < 0x80)
            return first;
        const int more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : 1;
        if (first < 0xc2 || first > 0xf4)
            return replacement;
        char32_t character = first & (0x3fU >> more);
        for (int i = 0; i < more; ++i) {
            if (atEnd() || (static_cast<unsigned char>(text_[at_]) & 0xc0) != 0x80)
                return replacement;
            character = character << 6 | (static_cast<unsigned char>(text_[at_++]) & 0x3fU);
        }
        return character;
    }

private:
    const std::string& text_;
    size_t at_ = 0;
};

struct Ink
{
    int channels[3];
    int opacity; ///< 1 to 255
};

Ink inkOf(unsigned colour)
{
    const int alpha = static_cast<int>(colour >> 24);
    return {{static_cast<int>(colour >> 16 & 0xff),
             static_cast<int>(colour >> 8 & 0xff),
             static_cast<int>(colour & 0xff)},
            alpha == 0 ? 255 : alpha};
}

void blend(cv::Mat& pixels, const FT_Bitmap& glyph, int left, int top, const Ink& ink)
{
    const int x0 = std::max(left, 0), x1 = std::min(left + static_cast<int>(glyph.width), pixels.cols);
    const int y0 = std::max(top, 0), y1 = std::min(top + static_cast<int>(glyph.rows), pixels.rows);
    for (int y = y0; y < y1; ++y) {
        const unsigned char* cover = glyph.buffer + static_cast<ptrdiff_t>(y - top) * glyph.pitch - left;
        unsigned char* out = pixels.ptr(y) + 3 * x0;
        for (int x = x0; x < x1; ++x, out += 3) {
            const int weight = cover[x] * ink.opacity / 255;
            for (int c = 0; c < 3; ++c)
                out[c] = static_cast<unsigned char>(
                    (out[c] * (255 - weight) + ink.channels[c] * weight + 127) / 255);
        }
    }
}

FT_Matrix turnBy(double degrees)
{
    const double angle = -degrees * CV_PI / 180; // the font's y axis points up
    const auto fixed = [](double value) { return static_cast<FT_Fixed>(std::lround(value * 0x10000)); };
    return {fixed(std::cos(angle)), fixed(-std::sin(angle)), fixed(std::sin(angle)), fixed(std::cos(angle))};
}

} // namespace

bool drawText(Image& image, const std::string& text, const cv::Point2d& anchor, const TextStyle& style)
{
    Fonts fonts(style.fontSize);
    if (!fonts.isValid())
        return false;
    const Ink ink = inkOf(style.colour);
    FT_Matrix turn = turnBy(style.degrees);
    FT_Vector pen{0, -std::lround(baselineShare * style.fontSize * 64)}; // 1/64 pixel, y up, from the anchor
    FT_Vector_Transform(&pen, &turn);
    const int x = static_cast<int>(std::lround(std::clamp(anchor.x, -1e6, 1e6)));
    const int y = static_cast<int>(std::lround(std::clamp(anchor.y, -1e6, 1e6)));
    const FT_Int32 load = FT_LOAD_RENDER | (style.degrees == 0 ? FT_LOAD_TARGET_LIGHT : FT_LOAD_NO_HINTING);
    for (Utf8Reader reader(text); !reader.atEnd();) {
        const char32_t character = reader.next();
        if (character < 0x20)
            continue;
        FT_Face face = fonts.faceFor(character);
        FT_Set_Transform(face, &turn, &pen);
        if (FT_Load_Char(face, character, load) != 0)
            continue;
        const FT_GlyphSlot glyph = face->glyph;
        if (glyph->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY)
            blend(image.pixels, glyph->bitmap, x + glyph->bitmap_left, y - glyph->bitmap_top, ink);
        pen.x += glyph->advance.x;
        pen.y += glyph->advance.y;
    }
    return true;
}

} // namespace mirvak

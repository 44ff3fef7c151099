#include "Fonts.h"

#include <fontconfig/fontconfig.h>

#include <memory>
#include <string>

namespace mirvak {

namespace {

struct FreePattern
{
    void operator()(FcPattern* pattern) const noexcept { FcPatternDestroy(pattern); }
};
struct FreeCharacters
{
    void operator()(FcCharSet* characters) const noexcept { FcCharSetDestroy(characters); }
};
struct FreeWords
{
    void operator()(FcStrSet* words) const noexcept { FcStrSetDestroy(words); }
};
struct EndList
{
    void operator()(FcStrList* list) const noexcept { FcStrListDone(list); }
};
using Pattern = std::unique_ptr<FcPattern, FreePattern>;

struct FontFile
{
    std::string path;
    int index = 0;
};

/// Letters that China, Japan and Korea share, each with forms of its own.
bool isHan(char32_t character)
{
    return (character >= 0x2e80 && character < 0xa000) || (character >= 0xf900 && character < 0xfb00) ||
           (character >= 0x20000 && character < 0x40000);
}

/// Whether the desktop's own language says which forms they take.
bool desktopHasForms()
{
    const std::unique_ptr<FcStrSet, FreeWords> languages(FcGetDefaultLangs());
    const std::unique_ptr<FcStrList, EndList> list(FcStrListCreate(languages.get()));
    const FcChar8* const first = FcStrListNext(list.get());
    const std::string language(first ? reinterpret_cast<const char*>(first) : "", first ? 2 : 0);
    return language == "zh" || language == "ja" || language == "ko";
}

FontFile fileFor(char32_t character)
{
    const Pattern wanted(FcPatternCreate());
    const std::unique_ptr<FcCharSet, FreeCharacters> characters(FcCharSetCreate());
    FcCharSetAddChar(characters.get(), character);
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>("sans-serif"));
    FcPatternAddCharSet(wanted.get(), FC_CHARSET, characters.get());
    FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
    if (isHan(character) && !desktopHasForms())
        FcPatternAddString(wanted.get(), FC_LANG, reinterpret_cast<const FcChar8*>("zh-cn"));
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(nullptr, wanted.get(), &result));
    FontFile file;
    FcChar8* path = nullptr;
    if (found && FcPatternGetString(found.get(), FC_FILE, 0, &path) == FcResultMatch) {
        file.path = reinterpret_cast<const char*>(path);
        FcPatternGetInteger(found.get(), FC_INDEX, 0, &file.index);
    }
    return file;
}

} // namespace

Fonts::Fonts(int pixelSize) : pixelSize_(pixelSize)
{
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) == 0)
        library_.reset(library);
    if (library_)
        open(U'A');
}

FT_Face Fonts::faceFor(char32_t character)
{
    for (const FontFace& face : faces_) {
        if (FT_Get_Char_Index(face.get(), character) != 0)
            return face.get();
    }
    FT_Face face = open(character);
    if (face && FT_Get_Char_Index(face, character) != 0)
        return face;
    return faces_.empty() ? nullptr : faces_.front().get();
}

FT_Face Fonts::open(char32_t character)
{
    const FontFile file = fileFor(character);
    FT_Face face = nullptr;
    if (file.path.empty() || FT_New_Face(library_.get(), file.path.c_str(), file.index, &face) != 0)
        return nullptr;
    FontFace owned(face);
    if (FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(pixelSize_)) != 0)
        return nullptr;
    faces_.push_back(std::move(owned));
    return face;
}

} // namespace mirvak

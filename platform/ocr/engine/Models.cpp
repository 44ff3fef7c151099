#include "Models.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace mirvak {

namespace {

bool isLanguage(const std::string& name)
{
    return name != "osd" && name != "equ";
}

} // namespace

Models::Models(std::string directory) : directory_(std::move(directory))
{
    std::error_code error;
    for (const auto& file : std::filesystem::directory_iterator(directory_, error)) {
        const std::string name = file.path().stem().string();
        if (file.path().extension() == ".traineddata" && isLanguage(name))
            languages_.push_back(name);
    }
    std::sort(languages_.begin(), languages_.end());
    const auto english = std::find(languages_.begin(), languages_.end(), "eng");
    if (english != languages_.end())
        std::rotate(languages_.begin(), english, english + 1);
}

TextModel* Models::get(const std::string& language)
{
    const auto known = std::find_if(
        loaded_.begin(), loaded_.end(), [&](const Entry& entry) { return entry.language == language; });
    if (known != loaded_.end())
        return known->model.get();
    loaded_.push_back({language, TextModel::load(directory_, language)});
    if (!loaded_.back().model) {
        std::fprintf(stderr, "ocr: %s/%s.traineddata cannot be used\n", directory_.c_str(), language.c_str());
    }
    return loaded_.back().model.get();
}

const GlyphBook* Models::glyphs(const std::string& language)
{
    const auto known = books_.find(language);
    const std::optional<GlyphBook>& book =
        known != books_.end()
            ? known->second
            : books_.emplace(language, GlyphBook::load(directory_ + '/' + language + ".glyphs"))
                  .first->second;
    return book ? &*book : nullptr;
}

bool Models::know(const std::string& word) const
{
    return std::any_of(loaded_.begin(), loaded_.end(), [&](const Entry& entry) {
        return entry.model && entry.model->knows(word);
    });
}

} // namespace mirvak

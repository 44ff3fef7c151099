#pragma once

#include "GlyphBook.h"
#include "TextModel.h"

#include <map>
#include <vector>

namespace mirvak {

/// The models of a directory, loaded when they are first needed. One thread at a time.
class Models
{
public:
    explicit Models(std::string directory);

    /// Names of the languages: English first, because its model is the surest to refuse other scripts, the
    /// others by name. Data that is no language (orientation, equations) is left out.
    const std::vector<std::string>& languages() const { return languages_; }
    /// Null when the file is broken; told once on standard error.
    TextModel* get(const std::string& language);
    /// What the characters of a language look like, from LANGUAGE.glyphs; null where there is no such file,
    /// or a broken one.
    const GlyphBook* glyphs(const std::string& language);
    /// Whether the dictionary of a model that was loaded has the word; UTF-8.
    bool know(const std::string& word) const;

private:
    struct Entry
    {
        std::string language;
        std::unique_ptr<TextModel> model;
    };
    std::string directory_;
    std::vector<std::string> languages_;
    std::vector<Entry> loaded_;
    std::map<std::string, std::optional<GlyphBook>> books_;
};

} // namespace mirvak

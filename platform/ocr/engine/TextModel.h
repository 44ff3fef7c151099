#pragma once

#include "Limit.h"
#include "ReadPage.h"
#include "Watch.h"

#include <opencv2/core.hpp>

#include <memory>
#include <string>

namespace mirvak {

enum class Shape {
    page, ///< the recogniser divides it by itself
    block,
    row
};

/// Whether the language is written without spaces between its words; by its model's name.
bool isUnspaced(const std::string& language);

/// One language's recogniser. One thread at a time; call within a SingleThread.
class TextModel
{
public:
    /// `directory` holds LANGUAGE.traineddata; null when that file is missing or broken.
    static std::unique_ptr<TextModel> load(const std::string& directory, const std::string& language);
    ~TextModel();

    const std::string& language() const { return language_; }
    /// Reads a part of a page: grey, dark letters on white. `origin` is where it lies on the page. Stops at
    /// the limit: `late` becomes true and the part counts as empty.
    ReadBlock read(const cv::Mat& part,
                   const cv::Point& origin,
                   Shape shape,
                   const Limit& limit,
                   bool& late,
                   const Stretch& stretch = {});
    /// Whether the model's dictionary has the word.
    bool knows(const std::string& word) const;
    bool isUnspaced() const { return mirvak::isUnspaced(language_); }

private:
    struct Engine;
    TextModel(std::unique_ptr<Engine> engine, std::string language);

    std::unique_ptr<Engine> engine_;
    std::string language_;
};

} // namespace mirvak

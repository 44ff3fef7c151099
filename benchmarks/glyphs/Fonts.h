#pragma once

#include <opencv2/core.hpp>

#include <memory>
#include <string>
#include <vector>

/// One face of a font file, drawn by FreeType without hinting. One thread at a time.
class Face
{
public:
    /// FILE or FILE:INDEX, of the face in a collection. Null when it cannot be opened.
    static std::unique_ptr<Face> open(const std::string& name);
    ~Face();
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    /// Grey, dark on white, cut to its ink. `emPx`: the size of the font. Empty when the face does not have
    /// it.
    cv::Mat draw(char32_t character, int emPx);

private:
    struct Handles;
    explicit Face(std::unique_ptr<Handles> handles);
    std::unique_ptr<Handles> handles_;
};

/// The 6763 ideographs of GB 2312-80, in its order.
std::vector<char32_t> commonIdeographs();

#pragma once

#include <opencv2/core.hpp>

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace mirvak {

/// What the characters of a script look like, learnt from many fonts: a linear discriminant space (Fisher
/// 1936) in which differences between fonts count little, with the mean of each character. Reentrant once
/// loaded.
class GlyphBook
{
public:
    struct Near
    {
        char32_t character = 0;
        double distance = 0; ///< squared; in each dimension 1 is what fonts usually differ by
    };

    /// Nothing when the file is missing, torn or of another kind.
    static std::optional<GlyphBook> load(const std::string& path);
    /// For whoever learns it. `projection`: glyphFeatures + 1 rows, of which the last one is added; a column
    /// for each dimension. `means`: a row for each character. 32-bit float. False when it cannot be written.
    static bool save(const std::string& path,
                     const cv::Mat& projection,
                     const cv::Mat& means,
                     const std::vector<char32_t>& characters);

    /// Where a glyph lies in the space; `features` as glyphFeaturesOf makes them.
    cv::Mat place(const cv::Mat& features) const;
    /// The characters that lie nearest to a place, the nearest first.
    std::vector<Near> nearest(const cv::Mat& place, size_t count) const;
    /// Nothing when the book does not have the character.
    std::optional<double> distance(const cv::Mat& place, char32_t character) const;
    size_t size() const { return characters_.size(); }

private:
    double distanceTo(const cv::Mat& place, size_t index) const;

    cv::Mat projection_, means_; ///< 32-bit float, 8-bit signed
    double unit_ = 1;            ///< of the means
    std::vector<char32_t> characters_;
    std::unordered_map<char32_t, size_t> indexes_;
};

} // namespace mirvak

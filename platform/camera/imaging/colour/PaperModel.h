#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// The colour that the empty paper has, or would have, at every place of a picture: its tint times the light
/// that falls on it.
class PaperModel
{
public:
    /// Levels: darker paper is taken for this, so that the noise of the night is not made a picture.
    static constexpr float darkest = 36;

    /// Looks at a reduced copy. Text is closed over; pictures, coloured areas and seals are bridged from the
    /// paper around them; soft shadows are followed.
    explicit PaperModel(const cv::Mat& rgb);

    /// The paper's colour, CV_32FC3, levels, on a grid of one value per factor() x factor() pixels.
    const cv::Mat& paper() const { return paper_; }
    int factor() const { return factor_; }
    /// On the same grid, CV_32F: 1 on paper with its print, 0 in pictures and coloured areas.
    const cv::Mat& share() const { return share_; }
    /// Standard deviation of the picture's noise on paper, levels.
    double noise() const { return noise_; }

private:
    void estimate(const std::array<cv::Mat, 3>& planes);
    void measureNoise(const cv::Mat& rgb);

    cv::Mat paper_;
    cv::Mat share_;
    cv::Mat mask_; ///< 255 where paper was seen
    int factor_ = 1;
    double noise_ = 2;
};

/// Divides the paper out of a picture in place: paper becomes white, everything else keeps its ratio to it.
struct Flattening
{
    /// On paper, values from this share of its brightness upwards count as white; the noise of dark places,
    /// which the division raises, comes on top. Pale colours of areas and pictures stay.
    double whiteFrom = 0.95;
    /// Standard deviations of noise that become white too.
    double noiseMargin = 3.0;
    /// Applied last, on paper and print: 256 levels to 256 levels.
    std::array<unsigned char, 256> curve = straightCurve();

    static std::array<unsigned char, 256> straightCurve();
};
void flatten(cv::Mat& rgb, const PaperModel& model, const Flattening& how);

} // namespace mirvak

#include "MadeCodes.h"

#include <opencv2/imgproc.hpp>

#include <zint.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int drawnModulePx = 8; // of a code before it is laid on a page
constexpr double modulesOfZintPixel = 2;

struct FreeSymbol
{
    void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};

} // namespace

cv::Mat drawCode(int symbology, const std::string& text, int modulePx, int inputMode)
{
    const std::unique_ptr<zint_symbol, FreeSymbol> symbol(ZBarcode_Create());
    symbol->symbology = symbology;
    symbol->input_mode = inputMode;
    symbol->show_hrt = 0;
    symbol->scale = static_cast<float>(modulePx / modulesOfZintPixel);
    symbol->output_options |= BARCODE_QUIET_ZONES;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    const int error = ZBarcode_Encode_and_Buffer(symbol.get(), bytes, static_cast<int>(text.size()), 0);
    if (error >= ZINT_ERROR) {
        std::fprintf(stderr, "made codes: %d: %s\n", symbology, symbol->errtxt);
        std::abort();
    }
    const cv::Mat rgb(symbol->bitmap_height, symbol->bitmap_width, CV_8UC3, symbol->bitmap);
    cv::Mat grey;
    cv::cvtColor(rgb, grey, cv::COLOR_RGB2GRAY);
    return grey;
}

CodePage::CodePage(int width, int height, int grey) : grey_(height, width, CV_8UC1, cv::Scalar(grey)) {}

std::vector<cv::Point2f> CodePage::add(int zintSymbology, const std::string& text, const Place& place)
{
    cv::Mat code = drawCode(zintSymbology, text, drawnModulePx);
    // So much softer that taking every n-th pixel of it makes no false patterns.
    const double shrink = drawnModulePx / place.modulePx;
    cv::GaussianBlur(code, code, cv::Size(), 0.45 * shrink);
    if (place.inverted)
        cv::bitwise_not(code, code);
    const float w = static_cast<float>(code.cols), h = static_cast<float>(code.rows);
    const double halfWidth = w / shrink / 2, halfHeight = h / shrink / 2, far = 1 - place.perspective;
    const double angle = place.degrees * CV_PI / 180, c = std::cos(angle), s = std::sin(angle);
    const auto at = [&](double x, double y) {
        return cv::Point2f(float(place.centre.x + c * x - s * y), float(place.centre.y + s * x + c * y));
    };
    const std::vector<cv::Point2f> from{{0, 0}, {w, 0}, {w, h}, {0, h}};
    std::vector<cv::Point2f> to{at(-halfWidth * far, -halfHeight * far),
                                at(halfWidth * far, -halfHeight * far),
                                at(halfWidth, halfHeight),
                                at(-halfWidth, halfHeight)};
    const cv::Rect part = cv::boundingRect(to) & cv::Rect(cv::Point(), grey_.size());
    std::vector<cv::Point2f> inPart;
    for (const cv::Point2f& corner : to)
        inPart.push_back(corner - cv::Point2f(part.tl()));
    cv::Mat laid, where;
    const cv::Mat transform = cv::getPerspectiveTransform(from, inPart);
    cv::warpPerspective(code, laid, transform, part.size(), cv::INTER_LINEAR);
    cv::warpPerspective(
        cv::Mat(code.size(), CV_8UC1, cv::Scalar(255)), where, transform, part.size(), cv::INTER_NEAREST);
    laid.copyTo(grey_(part), where);
    return to;
}

void CodePage::blur(double sigmaPx)
{
    if (sigmaPx > 0)
        cv::GaussianBlur(grey_, grey_, cv::Size(), sigmaPx);
}

void CodePage::addNoise(double sigma, unsigned seed)
{
    cv::RNG random(seed);
    cv::Mat noise(grey_.size(), CV_16SC1), sum;
    random.fill(noise, cv::RNG::NORMAL, 0, sigma);
    cv::add(grey_, noise, grey_, cv::noArray(), CV_8UC1);
}

void CodePage::setTones(int ink, int paper)
{
    grey_.convertTo(grey_, CV_8UC1, (paper - ink) / 255.0, ink);
}

cv::Mat CodePage::rgb() const
{
    cv::Mat result;
    cv::cvtColor(grey_, result, cv::COLOR_GRAY2RGB);
    return result;
}

#include "MadeBooks.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace made {

namespace {

constexpr double eye = 2000; // over the desk

// What one column of the photograph shows of a sheet.
struct Column
{
    float s = -1; // along the paper
    float scale = 1, light = 1;
};

std::vector<Column> columnsOf(const BentSheet& sheet, double shade)
{
    std::vector<Column> columns(static_cast<size_t>(bookFrame.width));
    double s = 0;
    for (double x = 0; s < sheet.picture.cols; x += 0.05) {
        const double h = sheet.height(x), rise = sheet.height(x + 0.05) - h;
        const double place = sheet.from + (sheet.goesRight ? x : -x);
        const double px = std::floor((bookFrame.width - 1) / 2.0 + place * eye / (eye - h) + 0.5);
        if (px >= 0 && px < bookFrame.width)
            columns[static_cast<size_t>(px)] = {static_cast<float>(s),
                                                static_cast<float>((eye - h) / eye),
                                                static_cast<float>(1 - shade * std::exp(-x / 30))};
        s += std::hypot(0.05, rise);
    }
    return columns;
}

void lay(cv::Mat& photo, const BentSheet& sheet, double shade)
{
    const std::vector<Column> columns = columnsOf(sheet, shade);
    const cv::Mat& page = sheet.picture;
    for (int x = 0; x < photo.cols; ++x) {
        const Column& column = columns[static_cast<size_t>(x)];
        const float at = sheet.goesRight ? column.s : static_cast<float>(page.cols - 1) - column.s;
        for (int y = 0; y < photo.rows && column.s >= 0; ++y) {
            const double v = page.rows / 2.0 + (y - photo.rows / 2.0) * static_cast<double>(column.scale);
            if (v < 0 || v >= page.rows - 1)
                continue;
            cv::Mat pixel;
            cv::getRectSubPix(page, {1, 1}, {at, static_cast<float>(v)}, pixel);
            photo.at<cv::Vec3b>(y, x) = pixel.at<cv::Vec3b>(0, 0) * (0.9 * static_cast<double>(column.light));
        }
    }
}

bool isRed(const cv::Vec3b& c)
{
    return c[0] > c[1] + 45 && c[0] > c[2] + 45;
}

} // namespace

int ruleAt(int k, int length)
{
    return length * (k + 1) / (rules + 1);
}

cv::Mat ruled(cv::Mat page)
{
    const cv::Scalar red(225, 60, 60);
    for (int k = 0; k < rules; ++k) {
        cv::line(page, {0, ruleAt(k, page.rows)}, {page.cols, ruleAt(k, page.rows)}, red, 3);
        cv::line(page, {ruleAt(k, page.cols), 0}, {ruleAt(k, page.cols), page.rows}, red, 3);
    }
    return page;
}

cv::Mat ruledText(unsigned seed)
{
    return ruled(textPage({pageWidth, pageHeight}, 30, seed));
}

cv::Mat
photograph(const std::vector<BentSheet>& sheets, double shade, double degrees, cv::Point2d aside, Desk ground)
{
    cv::Mat photo = desk(bookFrame, ground);
    for (const BentSheet& sheet : sheets)
        lay(photo, sheet, shade);
    const cv::Point2f middle(bookFrame.width / 2.0F, bookFrame.height / 2.0F);
    cv::Mat turned = cv::getRotationMatrix2D(middle, -degrees, 1);
    turned.at<double>(0, 2) += aside.x;
    turned.at<double>(1, 2) += aside.y;
    cv::warpAffine(photo.clone(), photo, turned, bookFrame, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    shine(photo, {});
    return photo;
}

cv::Mat spread(
    const cv::Mat& left, const cv::Mat& right, double bulge, double degrees, cv::Point2d aside, Desk ground)
{
    const auto height = [=](double across) {
        return bulge * (1 - std::exp(-across / 60)) * (1 - 0.25 * across / pageWidth);
    };
    return photograph({{left, height, false, -1}, {right, height}}, 0.45, degrees, aside, ground);
}

std::vector<double> crossings(const cv::Mat& rgb, int at, bool alongRow)
{
    std::vector<double> found;
    const int length = alongRow ? rgb.cols : rgb.rows;
    double sum = 0;
    int count = 0;
    for (int i = 0; i <= length; ++i) {
        if (i < length && isRed(alongRow ? rgb.at<cv::Vec3b>(at, i) : rgb.at<cv::Vec3b>(i, at))) {
            sum += i;
            ++count;
        } else if (count > 0) {
            if (count < 12) // else it runs along a rule
                found.push_back(sum / count);
            sum = count = 0;
        }
    }
    return found;
}

Shape shapeOf(const cv::Mat& page)
{
    Shape shape;
    std::vector<std::vector<double>> levels(rules);
    for (int x = page.cols / 12; x < page.cols * 11 / 12; x += 9) {
        const std::vector<double> at = crossings(page, x, false);
        for (size_t k = 0; at.size() == rules && k < rules; ++k)
            levels[k].push_back(at[k]);
    }
    for (const std::vector<double>& level : levels) {
        shape.looks += static_cast<int>(level.size());
        if (!level.empty())
            shape.bend = std::max(shape.bend,
                                  *std::max_element(level.begin(), level.end()) -
                                      *std::min_element(level.begin(), level.end()));
    }
    std::vector<double> uneven;
    for (int y = page.rows / 12; y < page.rows * 11 / 12; y += 9) {
        const std::vector<double> at = crossings(page, y, true);
        for (size_t k = 2; at.size() == rules && k < rules; ++k) {
            const double mean = (at.back() - at.front()) / (rules - 1);
            uneven.push_back(std::abs(at[k] - at[k - 1] - mean) / mean);
        }
    }
    std::sort(uneven.begin(), uneven.end());
    shape.uneven = uneven.empty() ? 1 : uneven[uneven.size() * 95 / 100];
    return shape;
}

} // namespace made

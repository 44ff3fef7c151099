#include "CodePictures.h"

#include "MadeCodes.h"

#include <opencv2/imgproc.hpp>

#include <zint.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct Kind
{
    const char* name;
    int symbology;
    const char* alphabet; ///< what its text is made of
    int shortest, longest;
    const char* before = "";
    const char* after = "";
};

constexpr auto digits = "0123456789";
constexpr auto capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr auto anything = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 /-.:";

const std::array kinds{
    Kind{"EAN-13", BARCODE_EANX, digits, 11, 11, "4"},
    Kind{"EAN-8", BARCODE_EANX, digits, 7, 7},
    Kind{"UPC-A", BARCODE_UPCA, digits, 10, 10, "7"},
    Kind{"UPC-E", BARCODE_UPCE, digits, 4, 4, "0", "17"},
    Kind{"Code 39", BARCODE_CODE39, capitals, 5, 10},
    Kind{"Code 93", BARCODE_CODE93, capitals, 5, 14},
    Kind{"Code 128", BARCODE_CODE128, anything, 6, 18},
    Kind{"ITF", BARCODE_C25INTER, digits, 8, 8},
    Kind{"ITF-14", BARCODE_ITF14, digits, 12, 12, "1"},
    Kind{"Codabar", BARCODE_CODABAR, digits, 6, 12, "A", "B"},
    Kind{"DataBar", BARCODE_RSS14, digits, 12, 12, "1"},
    Kind{"QR", BARCODE_QRCODE, anything, 10, 80},
    Kind{"QR", BARCODE_QRCODE, anything, 10, 80},
    Kind{"Micro QR", BARCODE_MICROQR, digits, 6, 18},
    Kind{"Data Matrix", BARCODE_DATAMATRIX, anything, 6, 60},
    Kind{"Data Matrix", BARCODE_DATAMATRIX, anything, 6, 60},
    Kind{"Aztec", BARCODE_AZTEC, anything, 8, 60},
    Kind{"PDF417", BARCODE_PDF417, anything, 20, 80},
};

struct Condition
{
    const char* name;
    double blur = 0, noise = 0, perspective = 0;
    bool inverted = false, upright = false;
    int ink = 0, paper = 255;
};

const std::array conditions{
    Condition{"upright", 0.5, 2, 0, false, true, 30, 235},
    Condition{"turned", 0.5, 2, 0, false, false, 30, 235},
    Condition{"blurred", 1.3, 2, 0, false, false, 30, 235},
    Condition{"noisy", 0.5, 14, 0, false, false, 30, 235},
    Condition{"low contrast", 0.6, 3, 0, false, false, 110, 180},
    Condition{"inverted", 0.5, 2, 0, true, false, 30, 235},
    Condition{"perspective", 0.5, 2, 0.14, false, false, 30, 235},
};

const std::array sizes{cv::Size(1600, 1200), cv::Size(2592, 1944), cv::Size(3264, 2448)};
constexpr int codesWanted = 9;
constexpr int triesForAPlace = 60;

char checkDigit(const std::string& number)
{
    int sum = 0, weight = 3;
    for (auto digit = number.rbegin(); digit != number.rend(); ++digit, weight = 4 - weight)
        sum += (*digit - '0') * weight;
    return static_cast<char>('0' + (10 - sum % 10) % 10);
}

// The check digit of a UPC-E stands for the long form of its number. Ours end with 7, which means four zeros
// before it (GS1 General Specifications, UPC-E).
char shortCheckDigit(const std::string& number)
{
    return checkDigit(number.substr(0, 6) + "0000" + number[6]);
}

std::string randomText(const Kind& kind, cv::RNG& random)
{
    const std::string alphabet = kind.alphabet;
    std::string text = kind.before;
    const int length = random.uniform(kind.shortest, kind.longest + 1);
    for (int i = 0; i < length; ++i)
        text += alphabet[static_cast<size_t>(random.uniform(0, static_cast<int>(alphabet.size())))];
    return text + kind.after;
}

// The text that a reader gives for what was encoded.
std::string textRead(const Kind& kind, const std::string& text)
{
    switch (kind.symbology) {
    case BARCODE_EANX:
    case BARCODE_UPCA:
    case BARCODE_ITF14:
        return text + checkDigit(text);
    case BARCODE_UPCE:
        return text + shortCheckDigit(text);
    case BARCODE_RSS14:
        return "01" + text + checkDigit(text);
    default:
        return text;
    }
}

/// A hand that was not quite still.
void shake(cv::Mat& grey, cv::RNG& random)
{
    const double length = random.uniform(0.0, 3.0), angle = random.uniform(0.0, CV_PI);
    const int side = 2 * cvCeil(length / 2) + 3;
    cv::Mat kernel(side, side, CV_8U, cv::Scalar(0));
    const cv::Point2d middle(side / 2.0 - 0.5, side / 2.0 - 0.5);
    const cv::Point2d half(length / 2 * std::cos(angle), length / 2 * std::sin(angle));
    constexpr int shift = 4; // fractions of pixels
    const auto fixed = [](const cv::Point2d& p) { return cv::Point(cvRound(p.x * 16), cvRound(p.y * 16)); };
    cv::line(kernel, fixed(middle - half), fixed(middle + half), {255}, 1, cv::LINE_AA, shift);
    kernel.convertTo(kernel, CV_32F);
    cv::filter2D(grey, grey, -1, kernel / cv::sum(kernel)[0], {-1, -1}, 0, cv::BORDER_REPLICATE);
}

/// Light that falls off to one side, and the noise of the night.
void light(cv::Mat& grey, cv::RNG& random)
{
    const double fall = random.uniform(0.0, 0.6), angle = random.uniform(0.0, 2 * CV_PI);
    cv::Mat noise(grey.size(), CV_32F), picture;
    random.fill(noise, cv::RNG::NORMAL, 0, random.uniform(1.0, 8.0));
    grey.convertTo(picture, CV_32F);
    for (int y = 0; y < grey.rows; ++y) {
        for (int x = 0; x < grey.cols; ++x) {
            const double along = std::cos(angle) * x / grey.cols + std::sin(angle) * y / grey.rows;
            picture.at<float>(y, x) *= static_cast<float>(1 - fall * (0.5 + 0.5 * along));
        }
    }
    cv::Mat(picture + noise).convertTo(grey, CV_8U);
}

} // namespace

CodePicture CodePictures::next()
{
    const Condition& condition = conditions[made_ % conditions.size()];
    const cv::Size size = sizes[made_ / conditions.size() % sizes.size()];
    ++made_;
    CodePage page(size.width, size.height, condition.inverted ? 25 : 255);
    CodePicture picture{condition.name, {}, {}};
    std::vector<std::pair<cv::Point2d, double>> taken; // circles
    for (int wanted = 0; wanted < codesWanted; ++wanted) {
        const Kind& kind = kinds[static_cast<size_t>(random_.uniform(0, static_cast<int>(kinds.size())))];
        const std::string text = randomText(kind, random_);
        CodePage::Place place;
        place.modulePx = random_.uniform(2.0, 4.0);
        place.degrees = condition.upright ? 0 : random_.uniform(0.0, 360.0);
        place.perspective = condition.perspective;
        place.inverted = condition.inverted;
        const cv::Mat drawn = drawCode(kind.symbology, text, 2);
        const double radius = std::hypot(drawn.cols, drawn.rows) / 4 * place.modulePx + 4;
        for (int i = 0; i < triesForAPlace; ++i) {
            if (2 * radius > size.height)
                break;
            place.centre = {random_.uniform(radius, size.width - radius),
                            random_.uniform(radius, size.height - radius)};
            const bool isFree = std::none_of(taken.begin(), taken.end(), [&](const auto& other) {
                return cv::norm(other.first - place.centre) < other.second + radius;
            });
            if (!isFree)
                continue;
            page.add(kind.symbology, text, place);
            taken.emplace_back(place.centre, radius);
            picture.codes.push_back({kind.name, textRead(kind, text)});
            break;
        }
    }
    page.setTones(condition.ink, condition.paper);
    page.blur(condition.blur);
    page.addNoise(condition.noise, static_cast<unsigned>(random_.next()));
    picture.grey = page.grey().clone();
    return picture;
}

CodePicture CodePictures::nextLabel()
{
    constexpr size_t linearKinds = 10; // the first ones of the list
    const cv::Size size(900, 680);
    const Kind& kind = kinds[made_++ % linearKinds];
    const std::string text = randomText(kind, random_);
    CodePage page(size.width, size.height);
    CodePage::Place place;
    place.centre = {size.width / 2.0 + random_.uniform(-60, 60),
                    size.height / 2.0 + random_.uniform(-60, 60)};
    place.modulePx = random_.uniform(1.2, 3.5);
    place.degrees = random_.uniform(0, 4) == 0 ? random_.uniform(0.0, 360.0) : random_.gaussian(12);
    place.perspective = random_.uniform(0.0, 0.2);
    page.add(kind.symbology, text, place);
    page.setTones(random_.uniform(10, 110), random_.uniform(150, 245));
    page.blur(random_.uniform(0.2, 1.2));
    CodePicture picture{kind.name, page.grey().clone(), {{kind.name, textRead(kind, text)}}};
    cv::putText(
        picture.grey, text, place.centre + cv::Point2d(-80, 150), cv::FONT_HERSHEY_SIMPLEX, 0.8, {60}, 2);
    shake(picture.grey, random_);
    light(picture.grey, random_);
    return picture;
}

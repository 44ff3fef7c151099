#include "Marks.h"

#include "Company.h"
#include "Components.h"
#include "LargeInk.h"
#include "Pictures.h"
#include "Pieces.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int inkLevel = 190;   // thin strokes of a camera's picture are hardly darker
constexpr size_t lineMarks = 5; // fewer make no line of print
// Around a speck: the rest of a faded letter. In heights of a mark, levels, and of the place.
constexpr double faintBeside = 1.2, faintOver = 0.6, faintShare = 0.03;
constexpr int faintLevel = 235;
const cv::Point rim(2, 2);     // px: so far an edge is soft
constexpr int ruleLength = 12; // heights of a mark: shorter lines part nothing

struct Heights
{
    int least, largest; // px, of what can be a letter
};

// Median, weighted so that letters count more than the grain between them. Bars of a code and rules are no
// letters by their shape.
int usualHeight(const Components& ink, const Heights& range, size_t enough)
{
    std::vector<std::pair<int, double>> heights;
    double total = 0;
    for (int i = 1; i < ink.count; ++i) {
        const cv::Rect box = ink.box(i);
        if (box.height < range.least || box.height > range.largest || box.height > 5 * box.width ||
            box.width > 6 * box.height)
            continue;
        const double weight = std::sqrt(ink.area(i));
        heights.emplace_back(box.height, weight);
        total += weight;
    }
    if (heights.size() < enough)
        return 0;
    std::sort(heights.begin(), heights.end());
    double below = 0;
    for (const auto& [height, weight] : heights) {
        below += weight;
        if (below * 2 >= total)
            return height;
    }
    return 0;
}

// What is lower than six pixels counts only on a page that has little else.
int usualHeight(const Components& ink, const cv::Size& page)
{
    const int largest = std::max(page.width, page.height) / 12;
    const int height = usualHeight(ink, {6, largest}, 40);
    return height > 0 ? height : usualHeight(ink, {3, largest}, 1);
}

enum class Kind { letter, grain, refuse };

Kind kindOf(const cv::Rect& box, int area, int height)
{
    const bool rule = (box.width > 8 * height && box.height * 2 <= height) ||
                      (box.height > 5 * height && box.width * 3 <= height);
    const bool picture = box.width > 8 * height && box.height > 6 * height;
    const bool border = box.height > 12 * height || box.width > 60 * height;
    if (rule || picture || border)
        return Kind::refuse;
    return area * 16 <= height * height ? Kind::grain : Kind::letter;
}

// Grain is what dots and commas are too. Where there is more of it than print can have, it is dirt.
int largestSpeck(const Components& ink, int height)
{
    int letters = 0, grains = 0;
    for (int i = 1; i < ink.count; ++i) {
        const Kind kind = kindOf(ink.box(i), ink.area(i), height);
        letters += kind == Kind::letter;
        grains += kind == Kind::grain;
    }
    return grains > 2 * letters + 50 ? height * height / 16 : height * height / 144;
}

// The page's edge and its shadow; a letter that the border cuts cannot be read anyway.
bool touchesBorder(const cv::Rect& box, const cv::Size& page)
{
    return box.x <= 1 || box.y <= 1 || box.br().x >= page.width - 1 || box.br().y >= page.height - 1;
}

void erase(cv::Mat& grey, const Components& ink, const std::vector<unsigned char>& isRefuse)
{
    for (int y = 0; y < grey.rows; ++y) {
        const int* label = ink.labels.ptr<int>(y);
        unsigned char* pixel = grey.ptr(y);
        for (int x = 0; x < grey.cols; ++x) {
            if (isRefuse[static_cast<size_t>(label[x])])
                pixel[x] = paper;
        }
    }
}

// An emblem among letters: large and with nothing of its size beside it.
bool isEmblem(const Components& ink, int i, int height)
{
    const cv::Rect box = ink.box(i);
    if (box.height < 4 * height || box.width < 3 * height)
        return false;
    const cv::Rect row(box.x - 3 * box.width, box.y, 7 * box.width, box.height);
    for (int other = 1; other < ink.count; ++other) {
        const cv::Rect beside = ink.box(other);
        if (other != i && beside.height * 2 > box.height && beside.height < 2 * box.height &&
            (beside & row).height * 2 > box.height)
            return false;
    }
    return true;
}

// Where letters stand and near them: thin strokes of a noisy picture fall into specks there.
cv::Mat nearLetters(const Components& ink, const cv::Size& page, int height)
{
    // A dot stands well over its letter, a comma little below.
    const int cell = std::max(1, height / 4), beside = height, over = 2 * height / 3, below = height / 4;
    cv::Mat near(page.height / cell + 1, page.width / cell + 1, CV_8UC1, cv::Scalar(0));
    for (int i = 1; i < ink.count; ++i) {
        cv::Rect box = ink.box(i);
        if (kindOf(box, ink.area(i), height) != Kind::letter || box.height * 2 < height)
            continue;
        box -= cv::Point(beside, over);
        box += cv::Size(2 * beside, over + below);
        near(cv::Rect({box.x / cell, box.y / cell}, cv::Point(box.br().x / cell + 1, box.br().y / cell + 1)) &
             cv::Rect({0, 0}, near.size()))
            .setTo(255);
    }
    cv::resize(near, near, {}, cell, cell, cv::INTER_NEAREST);
    return near;
}

// What can be no letter, and no part of one.
std::vector<unsigned char> refuseAmong(const Components& ink, const cv::Size& page, int height)
{
    const int speck = largestSpeck(ink, height), grain = height * height / 144;
    const cv::Mat near = speck > grain ? nearLetters(ink, page, height) : cv::Mat();
    std::vector<unsigned char> isRefuse(static_cast<size_t>(ink.count), 0);
    for (int i = 1; i < ink.count; ++i) {
        const cv::Rect box = ink.box(i);
        const bool part = !near.empty() && ink.area(i) > grain &&
                          near.at<unsigned char>(box.y + box.height / 2, box.x + box.width / 2) > 0;
        isRefuse[static_cast<size_t>(i)] =
            ink.area(i) <= (part ? grain : speck) || touchesBorder(box, page) ||
            kindOf(box, ink.area(i), height) == Kind::refuse || isEmblem(ink, i, height);
    }
    return isRefuse;
}

Company
companyOf(const Components& ink, const cv::Size& page, const std::vector<unsigned char>& isRefuse, int height)
{
    Company company(page, height);
    for (int i = 1; i < ink.count; ++i) {
        if (isRefuse[static_cast<size_t>(i)] > 0)
            continue;
        if (kindOf(ink.box(i), ink.area(i), height) == Kind::grain)
            company.addDot(ink.box(i));
        else
            company.addLetter(ink.box(i));
    }
    return company;
}

// In a column of numbers it stands for nothing, by itself.
bool isDash(const cv::Rect& box, int height)
{
    return box.width >= 2 * box.height && box.width * 4 >= height;
}

// Worn letters fall into dots, too, but what is left of their strokes lies around.
bool hasFaintInk(const cv::Mat& grey, const cv::Rect& speck, int height)
{
    const cv::Point reach(cvRound(faintBeside * height), cvRound(faintOver * height));
    const cv::Rect around = cv::Rect(speck.tl() - reach, speck.br() + reach) & cv::Rect({0, 0}, grey.size());
    const int ink = cv::countNonZero(grey(around) < faintLevel) - cv::countNonZero(grey(speck) < faintLevel);
    return ink > faintShare * (around.area() - speck.area());
}

Marks keepLetters(cv::Mat& grey, const Components& ink, int height)
{
    const std::vector<unsigned char> isRefuse = refuseAmong(ink, grey.size(), height);
    Company company = companyOf(ink, grey.size(), isRefuse, height);
    Marks marks;
    marks.height = height;
    for (int i = 1; i < ink.count; ++i) {
        const cv::Rect box = ink.box(i);
        const cv::Rect soft = cv::Rect(box.tl() - rim, box.br() + rim) & cv::Rect({0, 0}, grey.size());
        if (kindOf(box, ink.area(i), height) == Kind::grain && !isDash(box, height) && company.isAlone(box) &&
            !hasFaintInk(grey, soft, height))
            marks.dust.push_back(soft);
        else if (isRefuse[static_cast<size_t>(i)] == 0)
            marks.boxes.push_back(box);
        if (box.width > ruleLength * height && box.height <= height)
            marks.rules.push_back(box);
    }
    erase(grey, ink, isRefuse);
    for (const cv::Rect& speck : marks.dust)
        grey(speck).setTo(paper);
    return marks;
}

// Of a screen or hatching; longer than a dash.
bool isStroke(const cv::Rect& mark, int height)
{
    return mark.width > 3 * height && mark.height * 4 < height;
}

// Most of it are lines: print on a tinted ground. Edges and blots of a photograph make none.
bool holdsText(const std::vector<cv::Rect>& boxes, int height)
{
    size_t inLines = 0;
    for (const Piece& piece : piecesOf({boxes, {}, height, {}}).all) {
        const auto strokes = std::count_if(piece.marks.begin(), piece.marks.end(), [&](const cv::Rect& mark) {
            return isStroke(mark, height);
        });
        const size_t letters = piece.marks.size() - static_cast<size_t>(strokes);
        inLines += letters >= lineMarks ? letters : 0;
    }
    return inLines > 0 && inLines * 10 >= boxes.size() * 6;
}

void dropPictures(cv::Mat& grey, Marks& marks, const std::vector<cv::Rect>& pictures)
{
    for (const cv::Rect& picture : pictures) {
        const auto within =
            std::stable_partition(marks.boxes.begin(), marks.boxes.end(), [&](const cv::Rect& box) {
                return !picture.contains({box.x + box.width / 2, box.y + box.height / 2});
            });
        if (holdsText({within, marks.boxes.end()}, marks.height))
            continue;
        marks.boxes.erase(within, marks.boxes.end());
        grey(picture & cv::Rect({0, 0}, grey.size())).setTo(paper);
    }
}

} // namespace

Marks cleanMarks(cv::Mat& grey)
{
    const Components first(grey < inkLevel);
    const int height = usualHeight(first, grey.size());
    if (height == 0)
        return {};
    const std::vector<cv::Rect> pictures = picturesOf(grey, height);
    LargeInk large(grey, height);
    Marks marks;
    if (large.open(first)) {
        const Components ink(grey < inkLevel);
        marks = keepLetters(grey, ink, usualHeight(ink, grey.size()));
    } else {
        marks = keepLetters(grey, first, height);
    }
    dropPictures(grey, marks, pictures);
    marks.rules.insert(marks.rules.end(), large.rules().begin(), large.rules().end());
    return marks;
}

} // namespace mirvak

#include "Company.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {

// In heights of a mark: a dot has its letter or the next dot so near.
constexpr double beside = 1.2, over = 0.6;
constexpr double colonWidth = 0.35, colonHeight = 0.4;
constexpr double sameStrokes = 0.7; // of the higher one of a pair, that both share: quotation marks
constexpr int fewDots = 3;          // grains of dust that may lie near each other by chance
constexpr int cellsPerHeight = 4;

cv::Point middleOf(const cv::Rect& mark)
{
    return (mark.tl() + mark.br()) / 2;
}

} // namespace

Company::Company(const cv::Size& page, int height)
    : height_(height), cell_(std::max(1, height / cellsPerHeight)),
      letters_(page.height / cell_ + 1, page.width / cell_ + 1, CV_8UC1, cv::Scalar(0)),
      dots_(letters_.clone())
{
}

void Company::addLetter(const cv::Rect& mark)
{
    letters_(cellsAround(mark, 1)).setTo(255);
}

void Company::addDot(const cv::Rect& mark)
{
    dots_(cellsAround(mark, 0.5)).setTo(255);
    all_.push_back(mark);
}

bool Company::isAlone(const cv::Rect& dot)
{
    if (labels_.empty())
        findGroups();
    const cv::Point at = middleOf(dot) / cell_;
    if (letters_.at<unsigned char>(at) > 0)
        return false;
    const Group& group = groups_[static_cast<size_t>(labels_.at<int>(at))];
    const bool isColon = group.dots == 2 && group.box.width <= colonWidth * height_ &&
                         group.box.height >= colonHeight * height_;
    return group.dots <= fewDots && !isColon && !hasTwin(dot, group);
}

// The second stroke of a quotation mark stands too far from the word for itself.
bool Company::hasTwin(const cv::Rect& dot, const Group& group) const
{
    return std::any_of(group.atLetters.begin(), group.atLetters.end(), [&](const cv::Rect& other) {
        const int over = std::min(dot.br().y, other.br().y) - std::max(dot.y, other.y);
        return over >= sameStrokes * std::max(dot.height, other.height);
    });
}

void Company::findGroups()
{
    const int count = cv::connectedComponents(dots_, labels_, 8, CV_32S);
    groups_.resize(static_cast<size_t>(count));
    for (const cv::Rect& dot : all_) {
        Group& group = groups_[static_cast<size_t>(labels_.at<int>(middleOf(dot) / cell_))];
        ++group.dots;
        group.box |= dot;
        if (letters_.at<unsigned char>(middleOf(dot) / cell_) > 0)
            group.atLetters.push_back(dot);
    }
}

cv::Rect Company::cellsAround(const cv::Rect& mark, double share) const
{
    const cv::Point reach(cvRound(share * beside * height_), cvRound(share * over * height_));
    return cv::Rect((mark.tl() - reach) / cell_, (mark.br() + reach) / cell_ + cv::Point(1, 1)) &
           cv::Rect({0, 0}, letters_.size());
}

} // namespace mirvak

#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// Tells dots, which belong to letters or to a row of dots, from dust, which lies anywhere. Only what is
/// print to the eye is added: of faint grain there is some beside every speck. All in pixels of the page.
class Company
{
public:
    /// `height`: that of the page's usual mark
    Company(const cv::Size& page, int height);
    void addLetter(const cv::Rect& mark);
    void addDot(const cv::Rect& mark);
    /// After all were added.
    bool isAlone(const cv::Rect& dot);

private:
    struct Group
    {
        int dots = 0;
        cv::Rect box;
        std::vector<cv::Rect> atLetters; ///< those of them that have a letter beside them
    };

    void findGroups();
    bool hasTwin(const cv::Rect& dot, const Group& group) const;
    cv::Rect cellsAround(const cv::Rect& mark, double share) const;

    int height_, cell_;
    cv::Mat letters_; ///< cells that a letter stands near
    cv::Mat dots_;    ///< cells that belong to a group of dots
    cv::Mat labels_;  ///< of each cell, the number of its group
    std::vector<cv::Rect> all_;
    std::vector<Group> groups_;
};

} // namespace mirvak

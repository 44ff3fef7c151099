#pragma once

#include "Hand.h"
#include "TurnScript.h"

#include "camera/Photograph.h"
#include "camera/Sensor.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace deskpictures {

/// Shoots the page-turning film for automatic scanning: a pile of three pages and a hand, 1600 x 1200.
class TurnFilm
{
public:
    TurnFilm();

    /// Writes the frames as 0000.jpg, 0001.jpg, ... Throws OutputError.
    void shoot(const QString& directory);
    /// The times when a page lies still, a line each; frames are counted from 0, corners as in truth.csv.
    QByteArray truth() const;

private:
    Stage lyingPages(const std::vector<int>& pages) const;
    cv::Mat seePage(int page, const Place& place) const;
    cv::Mat seeHand(const Place& place) const;
    /// How far a place moves in the picture, in pixels.
    cv::Point2d way(const Place& from, const Place& to) const;
    cv::Mat energy(int frame, const Stage& ground) const;
    void addHandAndPage(int frame, Stage& stage) const;

    TurnScript m_script;
    Scene m_scene;
    View m_view;
    std::vector<FlatLayer> m_pages;
    HandPicture m_hand;
};

} // namespace deskpictures

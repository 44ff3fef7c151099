// Faces drawn with known places of eyes, nose and mouth, so that no test needs a person's photograph.
#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace drawn {

struct Person
{
    cv::Scalar skin{222, 178, 150}, hair{60, 42, 30}, iris{70, 100, 130};
    double eyeGap = 84; ///< between the middles of the eyes, where the face is 190 wide
    double mouthY = 84; ///< of its middle, below that of the eyes
    double noseY = 48;  ///< of its tip
    double brow = 5;    ///< half the height of a brow
    double mouthWidth = 32, jaw = 118;
};

struct Place
{
    cv::Point2d eyes{320, 220}; ///< the point between them
    double scale = 1;           ///< 1: the face is 190 pixels wide
    double degrees = 0;         ///< clockwise
};

/// An empty room: a wall with soft light.
cv::Mat room(cv::Size size, const cv::Scalar& colour = {150, 160, 170});
/// Draws a face with neck and shoulders into the picture.
void face(cv::Mat& rgb, const Place& place, const Person& person = {});
/// Where it has the eyes, the tip of the nose and the corners of the mouth; left as the picture has it.
std::vector<cv::Point2f> fivePoints(const Place& place, const Person& person = {});
/// A room with one face in it.
cv::Mat picture(const Place& place = {}, const Person& person = {}, cv::Size size = {640, 480});

} // namespace drawn

#include "DrawnFaces.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace drawn {

namespace {

constexpr int half = 300; // of the canvas, in face units
constexpr int fine = 2;   // canvas pixels for each of them

cv::Point at(double x, double y)
{
    return {cvRound((half + x) * fine), cvRound((half + y) * fine)};
}

void ellipse(cv::Mat& canvas, double x, double y, double w, double h, const cv::Scalar& colour)
{
    cv::ellipse(
        canvas, at(x, y), {cvRound(w * fine), cvRound(h * fine)}, 0, 0, 360, colour, cv::FILLED, cv::LINE_AA);
}

// Mixes a colour in with soft edges, as shade and light lie on a face.
void shade(cv::Mat& canvas, double x, double y, double w, double h, const cv::Scalar& colour, double amount)
{
    constexpr double coarse = 0.25; // soft edges need no more pixels
    cv::Mat mask(canvas.size(), CV_8U, cv::Scalar(0));
    ellipse(mask, x, y, w, h, cv::Scalar::all(amount * 255));
    cv::resize(mask, mask, {}, coarse, coarse, cv::INTER_AREA);
    cv::GaussianBlur(mask, mask, {}, std::min(w, h) * fine * coarse * 0.5);
    cv::resize(mask, mask, canvas.size());
    canvas.forEach<cv::Vec3b>([&](cv::Vec3b& pixel, const int* where) {
        const int part = mask.at<uchar>(where[0], where[1]);
        for (int i = 0; part > 0 && i < 3; ++i)
            pixel[i] = cv::saturate_cast<uchar>((pixel[i] * (255 - part) + colour[i] * part) / 255);
    });
}

void eye(cv::Mat& canvas, double x, const Person& person)
{
    const cv::Scalar dark = person.skin * 0.55;
    shade(canvas, x, -4, 30, 18, dark, 0.55);
    ellipse(canvas, x, 0, 19, 9, person.hair * 0.6);
    ellipse(canvas, x, 1, 17.5, 7.5, {235, 232, 228});
    ellipse(canvas, x, 0.5, 8, 8, person.iris);
    ellipse(canvas, x, 0.5, 4, 4, {12, 12, 12});
    ellipse(canvas, x + 2.5, -2, 1.8, 1.8, {250, 250, 250});
    cv::ellipse(
        canvas, at(x, 1), {20 * fine, 11 * fine}, 0, 190, 350, person.hair * 0.6, 3 * fine, cv::LINE_AA);
    cv::ellipse(canvas,
                at(x, -14),
                {26 * fine, 10 * fine},
                0,
                195,
                345,
                person.hair,
                cvRound(person.brow * 2) * fine / 2,
                cv::LINE_AA);
}

void nose(cv::Mat& canvas, const Person& person)
{
    shade(canvas, -13, person.noseY - 20, 7, 26, person.skin * 0.7, 0.5);
    shade(canvas, 3, person.noseY - 24, 6, 26, {255, 235, 220}, 0.5);
    shade(canvas, 0, person.noseY + 8, 24, 8, person.skin * 0.6, 0.7);
    ellipse(canvas, -9, person.noseY + 7, 5, 3, person.skin * 0.35);
    ellipse(canvas, 9, person.noseY + 7, 5, 3, person.skin * 0.35);
}

void mouth(cv::Mat& canvas, const Person& person)
{
    const double w = person.mouthWidth;
    ellipse(canvas, 0, person.mouthY - 2, w, 7, {176, 92, 88});
    ellipse(canvas, 0, person.mouthY + 4, w * 0.8, 8, {190, 105, 100});
    ellipse(canvas, 0, person.mouthY, w, 1.6, {90, 40, 40});
    shade(canvas, 0, person.mouthY + 18, w * 0.7, 7, person.skin * 0.7, 0.5);
}

cv::Mat headOnly(const Person& person, cv::Mat& mask)
{
    cv::Mat canvas(2 * half * fine, 2 * half * fine, CV_8UC3, person.skin);
    mask = cv::Mat(canvas.size(), CV_8U, cv::Scalar(0));
    const cv::Scalar shirt(60, 80, 130);
    const auto body = [&](double x, double y, double w, double h, const cv::Scalar& colour) {
        ellipse(canvas, x, y, w, h, colour);
        ellipse(mask, x, y, w, h, cv::Scalar(255));
    };
    body(0, 330, 210, 140, shirt);
    body(0, 170, 58, 70, person.skin * 0.72);
    body(0, -25, 112, 125, person.hair);
    body(-96, 10, 12, 28, person.skin * 0.8);
    body(96, 10, 12, 28, person.skin * 0.8);
    body(0, 18, 95, person.jaw, person.skin);
    cv::Mat hairline(canvas.size(), CV_8U, cv::Scalar(0));
    ellipse(hairline, 0, 18, 95, person.jaw, cv::Scalar(255));
    cv::rectangle(hairline, at(-half, -62), at(half, half), cv::Scalar(0), cv::FILLED);
    canvas.setTo(person.hair, hairline);
    return canvas;
}

cv::Matx23d ontoPicture(const Place& place)
{
    const double angle = place.degrees * CV_PI / 180;
    const double a = place.scale * std::cos(angle);
    const double b = place.scale * std::sin(angle);
    return {a, -b, place.eyes.x, b, a, place.eyes.y};
}

} // namespace

cv::Mat room(cv::Size size, const cv::Scalar& colour)
{
    cv::Mat rgb(size, CV_8UC3);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const double light = 0.8 + 0.3 * x / size.width - 0.15 * y / size.height;
            rgb.at<cv::Vec3b>(y, x) = cv::Vec3b(cv::saturate_cast<uchar>(colour[0] * light),
                                                cv::saturate_cast<uchar>(colour[1] * light),
                                                cv::saturate_cast<uchar>(colour[2] * light));
        }
    }
    return rgb;
}

void face(cv::Mat& rgb, const Place& place, const Person& person)
{
    cv::Mat mask;
    cv::Mat canvas = headOnly(person, mask);
    shade(canvas, -80, 30, 30, 80, person.skin * 0.6, 0.6); // the head is round
    shade(canvas, 80, 30, 30, 80, person.skin * 0.6, 0.6);
    shade(canvas, 0, 130, 70, 20, person.skin * 0.6, 0.6);
    shade(canvas, -45, 45, 24, 20, {235, 165, 145}, 0.4);
    shade(canvas, 45, 45, 24, 20, {235, 165, 145}, 0.4);
    eye(canvas, -person.eyeGap / 2, person);
    eye(canvas, person.eyeGap / 2, person);
    nose(canvas, person);
    mouth(canvas, person);
    const cv::Matx23d m = ontoPicture(place);
    const double k = 1.0 / fine; // canvas to face units and on to the picture
    const cv::Matx23d whole(m(0, 0) * k,
                            m(0, 1) * k,
                            m(0, 2) - half * (m(0, 0) + m(0, 1)),
                            m(1, 0) * k,
                            m(1, 1) * k,
                            m(1, 2) - half * (m(1, 0) + m(1, 1)));
    cv::GaussianBlur(canvas, canvas, {}, std::max(0.6, 0.5 * fine / place.scale));
    cv::Mat placed, placedMask;
    cv::warpAffine(canvas, placed, whole, rgb.size());
    cv::warpAffine(mask, placedMask, whole, rgb.size());
    placed.copyTo(rgb, placedMask > 127);
}

std::vector<cv::Point2f> fivePoints(const Place& place, const Person& person)
{
    const cv::Matx23d m = ontoPicture(place);
    std::vector<cv::Point2f> points;
    for (const cv::Point2d p : {cv::Point2d(-person.eyeGap / 2, 0),
                                cv::Point2d(person.eyeGap / 2, 0),
                                cv::Point2d(0, person.noseY),
                                cv::Point2d(-person.mouthWidth, person.mouthY),
                                cv::Point2d(person.mouthWidth, person.mouthY)})
        points.emplace_back(static_cast<float>(m(0, 0) * p.x + m(0, 1) * p.y + m(0, 2)),
                            static_cast<float>(m(1, 0) * p.x + m(1, 1) * p.y + m(1, 2)));
    return points;
}

cv::Mat picture(const Place& place, const Person& person, cv::Size size)
{
    cv::Mat rgb = room(size);
    face(rgb, place, person);
    return rgb;
}

} // namespace drawn

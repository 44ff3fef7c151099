#include "FocusSearch.h"

#include "ControlValue.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {
namespace {

constexpr int firstPositions = 11;
constexpr int closerRounds = 4; // two positions each
// The lens moves and the sensor reads out while frames that are older still arrive.
constexpr int framesToSettle = 3;
constexpr std::chrono::milliseconds timeToSettle{120};
// Noise alone makes places differ by a few per cent; a flat one has next to no structure at all.
constexpr double leastGain = 1.25;
constexpr double leastStructure = 10; // squared grey levels

/// How much structure the place has: the mean square of the slopes.
double sharpnessAt(const cv::Mat& rgb, double x, double y)
{
    const int side = std::max(std::min(rgb.cols, rgb.rows) / 5, 32);
    const cv::Point middle(static_cast<int>(x * rgb.cols), static_cast<int>(y * rgb.rows));
    const cv::Rect place =
        cv::Rect(middle.x - side / 2, middle.y - side / 2, side, side) & cv::Rect({}, rgb.size());
    cv::Mat grey, across, down;
    cv::cvtColor(rgb(place), grey, cv::COLOR_RGB2GRAY);
    cv::Sobel(grey, across, CV_32F, 1, 0);
    cv::Sobel(grey, down, CV_32F, 0, 1);
    return (across.dot(across) + down.dot(down)) / place.area();
}

} // namespace

MirvakResult FocusSearch::begin(double x, double y)
{
    if (!(x >= 0 && x <= 1 && y >= 0 && y <= 1))
        return MIRVAK_BAD_ARGUMENT;
    const std::lock_guard lock(mutex_);
    MirvakControlInfo focus{};
    if (device_.readControl(MIRVAK_FOCUS, focus) != MIRVAK_OK)
        return restartAutomatic();
    MirvakControlInfo automatic{};
    const bool isAutomatic =
        device_.readControl(MIRVAK_FOCUS_AUTO, automatic) == MIRVAK_OK && automatic.value != 0;
    if (state_ != MIRVAK_BUSY) // else: what was before the search that this one replaces
        before_ = {isAutomatic, focus.value};
    if (isAutomatic) {
        const MirvakResult result = device_.setControl(MIRVAK_FOCUS_AUTO, 0);
        if (result != MIRVAK_OK)
            return result;
    }
    x_ = x;
    y_ = y;
    return planFirst(focus);
}

/// For a camera that only focuses by itself.
MirvakResult FocusSearch::restartAutomatic()
{
    MirvakResult result = device_.setControl(MIRVAK_FOCUS_AUTO, 0);
    if (result == MIRVAK_OK)
        result = device_.setControl(MIRVAK_FOCUS_AUTO, 1);
    return result == MIRVAK_BAD_ARGUMENT ? MIRVAK_NOT_FOUND : result;
}

MirvakResult FocusSearch::planFirst(const MirvakControlInfo& focus)
{
    range_ = focus;
    sharpness_.clear();
    toTry_.clear();
    const int length = focus.maximum - focus.minimum;
    for (int i = firstPositions - 1; i >= 0; --i) {
        const int position = allowedValue(focus, focus.minimum + length * i / (firstPositions - 1));
        if (toTry_.empty() || toTry_.back() != position)
            toTry_.push_back(position);
    }
    spacing_ = length / (firstPositions - 1);
    state_ = MIRVAK_BUSY;
    move();
    return state_ == MIRVAK_BUSY ? MIRVAK_OK : state_;
}

void FocusSearch::cancel()
{
    const std::lock_guard lock(mutex_);
    if (state_ == MIRVAK_BUSY)
        state_ = MIRVAK_OK;
}

void FocusSearch::abandon()
{
    const std::lock_guard lock(mutex_);
    if (state_ == MIRVAK_BUSY)
        goBack();
    state_ = MIRVAK_OK;
}

void FocusSearch::look(const Image& image)
{
    const std::lock_guard lock(mutex_);
    if (state_ != MIRVAK_BUSY || image.pixels.empty() || !image.taken)
        return;
    if (++framesSeen_ == 1)
        movedAt_ = *image.taken;
    if (framesSeen_ < framesToSettle || *image.taken - movedAt_ < timeToSettle)
        return;
    sharpness_[toTry_.back()] = sharpnessAt(image.pixels, x_, y_);
    toTry_.pop_back();
    advance();
}

void FocusSearch::advance()
{
    if (!toTry_.empty() || planCloser()) {
        move();
        return;
    }
    const auto bySharpness = [](const auto& a, const auto& b) { return a.second < b.second; };
    const auto [least, most] = std::minmax_element(sharpness_.begin(), sharpness_.end(), bySharpness);
    if (most->second < leastStructure || most->second < least->second * leastGain)
        finish(MIRVAK_NOT_FOUND);
    else
        finish(device_.setControl(MIRVAK_FOCUS, most->first));
}

/// Halfway between the best position and its neighbours; false when that is close enough.
bool FocusSearch::planCloser()
{
    constexpr size_t most = firstPositions + 2 * closerRounds;
    spacing_ /= 2;
    if (spacing_ < std::max(range_.step, 1) || sharpness_.size() + 2 > most)
        return false;
    const auto best = std::max_element(sharpness_.begin(),
                                       sharpness_.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    for (const int position : {best->first - spacing_, best->first + spacing_}) {
        const int allowed = allowedValue(range_, position);
        if (sharpness_.count(allowed) == 0)
            toTry_.push_back(allowed);
    }
    return !toTry_.empty();
}

void FocusSearch::move()
{
    framesSeen_ = 0;
    const MirvakResult result = device_.setControl(MIRVAK_FOCUS, toTry_.back());
    if (result != MIRVAK_OK)
        finish(result);
}

void FocusSearch::finish(MirvakResult result)
{
    state_ = result == MIRVAK_OK ? MIRVAK_OK : MIRVAK_NOT_FOUND;
    if (result != MIRVAK_OK)
        goBack();
}

void FocusSearch::goBack()
{
    device_.setControl(MIRVAK_FOCUS, before_.focus);
    if (before_.isAutomatic)
        device_.setControl(MIRVAK_FOCUS_AUTO, 1);
}

MirvakResult FocusSearch::state() const
{
    const std::lock_guard lock(mutex_);
    return state_;
}

} // namespace mirvak

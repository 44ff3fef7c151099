#include "Session.h"

#include "DeskSensor.h"
#include "LoadModule.h"
#include "UsbSensor.h"

#include <algorithm>

namespace mirvak {

namespace {

using State = FingerSensor::State;
using std::chrono::milliseconds;

constexpr milliseconds patienceWithOpening(1500);
constexpr milliseconds poll(ZAZ_POLL_MILLISECONDS);

} // namespace

Session::Session(int number)
{
    const std::optional<DeskConfig> desk = DeskConfig::fromEnvironment();
    if (desk)
        prints_ = desk->fingerprint;
    if (!desk || desk->realDevices)
        sensor_ = std::make_unique<UsbSensor>(ownFolder() + "zazsensor", number);
}

State Session::waitWhile(State state, milliseconds limit)
{
    const State now = sensor_ ? sensor_->waitWhile(state, limit) : State::none;
    if (now != State::none || !prints_)
        return now;
    sensor_ = std::make_unique<DeskSensor>(*prints_);
    prints_.reset();
    return sensor_->waitWhile(state, milliseconds(0));
}

ZazResult Session::verify()
{
    const std::lock_guard lock(mutex_);
    if (isTakenOver_)
        return ZAZ_TAKEN_OVER;
    const State state = waitWhile(State::opening, patienceWithOpening);
    return state == State::none || state == State::lost ? ZAZ_NO_SENSOR : ZAZ_OK;
}

ZazResult Session::getImage()
{
    const std::lock_guard lock(mutex_);
    if (isTakenOver_)
        return ZAZ_TAKEN_OVER;
    if (!picture_.empty())
        return ZAZ_OK;
    switch (waitWhile(State::noFinger, poll)) {
    case State::finger:
        picture_ = sensor_->takePixels();
        return ZAZ_OK;
    case State::none:
        return ZAZ_NO_SENSOR;
    case State::lost:
        return ZAZ_LOST;
    case State::opening:
    case State::noFinger:
        break;
    }
    return ZAZ_NO_FINGER;
}

ZazResult Session::upImage(unsigned char* pixels)
{
    const std::lock_guard lock(mutex_);
    if (picture_.empty())
        return ZAZ_NO_PICTURE;
    std::copy(picture_.begin(), picture_.end(), pixels);
    return ZAZ_OK;
}

void Session::giveUp()
{
    const std::lock_guard lock(mutex_);
    isTakenOver_ = true;
    prints_.reset();
    sensor_.reset();
}

} // namespace mirvak

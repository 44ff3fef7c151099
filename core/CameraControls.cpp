#include "CameraControls.h"

#include "CameraSession.h"
#include "ControlStore.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int glanceMs = 500;
constexpr int focusGlanceMs = 100;

bool operator==(const MirvakControlInfo& a, const MirvakControlInfo& b)
{
    return a.control == b.control && a.kind == b.kind && a.minimum == b.minimum && a.maximum == b.maximum &&
           a.step == b.step && a.standard == b.standard && a.value == b.value && a.entries == b.entries &&
           a.isHeld == b.isHeld;
}

bool areSame(const ControlList& a, const ControlList& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](auto& x, auto& y) { return x == y; });
}

} // namespace

CameraControls::CameraControls(MirvakCamera& camera, CameraSession& session, QObject* parent)
    : QObject(parent), session_(session), link_(camera, [this](const ControlReport& report) {
          QMetaObject::invokeMethod(
              this, [this, report] { note(report); }, Qt::QueuedConnection);
      })
{
    connect(&glance_, &QTimer::timeout, this, [this] { link_.ask(); });
    connect(&session_, &CameraSession::started, this, &CameraControls::follow);
    connect(&session_, &CameraSession::closing, this, &CameraControls::leave);
}

void CameraControls::follow()
{
    identity_ = session_.current().identity;
    connection_ = link_.connectTo(session_.device());
    if (isWatched_)
        link_.ask();
    pace();
}

void CameraControls::leave()
{
    connection_ = link_.connectTo(nullptr);
    identity_.clear();
    unheard_.clear();
    const bool wasFocusing = std::exchange(isFocusing_, false);
    pace();
    if (wasFocusing)
        Q_EMIT focused(true); // nothing that the user could do about it
    if (controls_.isEmpty())
        return;
    controls_.clear();
    Q_EMIT changed();
}

void CameraControls::watch(bool isOn)
{
    isWatched_ = isOn;
    if (isOn && !identity_.isEmpty())
        link_.ask();
    pace();
}

void CameraControls::pace()
{
    if (identity_.isEmpty() || (!isWatched_ && !isFocusing_))
        glance_.stop();
    else
        glance_.start(isFocusing_ ? focusGlanceMs : glanceMs);
}

void CameraControls::set(int control, int value)
{
    const auto found = std::find_if(
        controls_.begin(), controls_.end(), [control](const auto& info) { return info.control == control; });
    if (identity_.isEmpty() || found == controls_.end())
        return;
    found->value = value;
    keep(control);
    unheard_[control] = link_.set(control, value);
    Q_EMIT changed();
}

void CameraControls::resetAll()
{
    if (identity_.isEmpty())
        return;
    ControlStore(identity_).forget();
    unheard_.clear();
    const bool wasFocusing = std::exchange(isFocusing_, false);
    link_.resetAll();
    pace();
    if (wasFocusing)
        Q_EMIT focused(true); // it was the user who ended the search
}

void CameraControls::focusAt(double x, double y)
{
    if (identity_.isEmpty())
        return;
    focusRequest_ = link_.focusAt(x, y);
    isFocusing_ = true;
    pace();
}

void CameraControls::note(const ControlReport& report)
{
    if (report.connection != connection_ || identity_.isEmpty())
        return;
    const ControlList before = controls_;
    controls_ = report.controls;
    for (MirvakControlInfo& info : controls_) {
        const auto request = unheard_.find(info.control);
        if (request == unheard_.end())
            continue;
        if (*request > report.request) { // on its way: the user sees what he has set
            const MirvakControlInfo* wanted = findControl(before, info.control);
            info.value = wanted ? wanted->value : info.value;
            continue;
        }
        unheard_.erase(request);
        keep(info.control);
        // Where the automatic has stopped is part of what was chosen by switching it off.
        if (info.kind == MIRVAK_SWITCH && info.value == 0)
            keep(info.control + 1);
    }
    if (isFocusing_ && focusRequest_ <= report.request)
        noteFocus(report.focusState);
    if (!areSame(before, controls_))
        Q_EMIT changed();
}

void CameraControls::noteFocus(int state)
{
    if (state == MIRVAK_BUSY)
        return;
    isFocusing_ = false;
    pace();
    if (state == MIRVAK_OK) {
        keep(MIRVAK_FOCUS_AUTO);
        keep(MIRVAK_FOCUS);
    }
    Q_EMIT focused(state == MIRVAK_OK);
}

void CameraControls::keep(int control)
{
    if (const MirvakControlInfo* info = findControl(controls_, control))
        ControlStore(identity_).keep(control, info->value);
}

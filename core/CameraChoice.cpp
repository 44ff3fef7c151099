#include "CameraChoice.h"

#include <algorithm>

namespace {

constexpr std::chrono::seconds preferredFor{10};
constexpr std::chrono::seconds oneArrival{5}; // a device with two heads names them one after the other
constexpr std::chrono::seconds oneExchange{
    5}; // another is often listed before the end of the first is noticed

} // namespace

void CameraChoice::listed(const Cameras& cameras, Time now)
{
    for (const Camera& camera : cameras) {
        if (!find(camera.identity))
            arrivals_[camera.identity] = now;
    }
    cameras_ = cameras;
    if (!isStarted_)
        idleSince_ = now + Time::duration(1); // what was there at the start was not plugged in
    isStarted_ = true;
}

void CameraChoice::chosen(const QString& identity, Time now)
{
    wanted_ = identity;
    open_.clear();
    lost_.clear();
    idleSince_ = now;
}

void CameraChoice::opened(const QString& identity)
{
    open_ = identity;
    if (open_ == lost_)
        lost_.clear();
}

void CameraChoice::lost(const QString& identity, Time now)
{
    open_.clear();
    lost_ = identity;
    lostAt_ = now;
    idleSince_ = std::max(idleSince_, now - oneExchange);
}

const Camera* CameraChoice::find(const QString& identity) const
{
    const int row = rowOf(cameras_, identity);
    return row >= 0 ? &cameras_[row] : nullptr;
}

QStringList CameraChoice::candidates() const
{
    Cameras arrived;
    for (const Camera& camera : cameras_) {
        if (arrivals_[camera.identity] >= idleSince_)
            arrived << camera;
    }
    std::stable_sort(
        arrived.begin(), arrived.end(), [](const Camera& a, const Camera& b) { return a.type < b.type; });

    QStringList identities{wanted_, lost_};
    for (const Camera& camera : arrived)
        identities << camera.identity;
    if (wanted_.isEmpty() && lost_.isEmpty()) {
        const auto main = std::find_if(
            cameras_.begin(), cameras_.end(), [](const Camera& camera) { return camera.isMain(); });
        if (main != cameras_.end())
            identities << main->identity;
    }
    identities.removeDuplicates();
    identities.erase(std::remove_if(identities.begin(),
                                    identities.end(),
                                    [this](const QString& identity) { return !find(identity); }),
                     identities.end());
    return identities;
}

QString CameraChoice::better(Time now) const
{
    const Camera* open = find(open_);
    if (!open || open_ == wanted_)
        return {};
    if (find(lost_) && now - lostAt_ <= preferredFor)
        return lost_;
    if (open->isMain())
        return {};
    const auto head = std::find_if(cameras_.begin(), cameras_.end(), [&](const Camera& camera) {
        const auto after = arrivals_[camera.identity] - arrivals_[open_];
        return camera.isMain() && after >= Time::duration(0) && after <= oneArrival;
    });
    return head != cameras_.end() ? head->identity : QString();
}

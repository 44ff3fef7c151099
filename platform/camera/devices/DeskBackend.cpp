#include "DeskBackend.h"

#include "DeskDevice.h"

#include <algorithm>
#include <cstdio>

namespace mirvak {
namespace {

/// The modes in the order of the camera's resolutions; empty when there is no picture to play.
std::vector<CameraMode> modesOf(const DeskConfig::Camera& camera, PictureSource& pictures)
{
    std::vector<CameraMode> modes;
    for (const DeskConfig::Size& size : camera.resolutions) {
        cv::Size pixels(size.width, size.height);
        if (size.isNative()) {
            const auto first = pictures.firstSize();
            if (!first)
                return {};
            pixels = *first;
        }
        modes.push_back({PixelFormat::Mjpeg, pixels.width, pixels.height});
    }
    return modes;
}

long long largestPixels(const DeskConfig::Camera& camera)
{
    PictureSource pictures(PictureSource::filesOf(camera.source));
    long long most = 0;
    for (const CameraMode& mode : modesOf(camera, pictures))
        most = std::max(most, static_cast<long long>(mode.width) * mode.height);
    return most;
}

/// By their names; of several with one name each further one gets a number.
std::vector<std::string> identitiesOf(const std::vector<DeskConfig::Camera>& cameras)
{
    std::vector<std::string> identities;
    std::map<std::string, int> times;
    for (const DeskConfig::Camera& camera : cameras) {
        const int time = ++times[camera.name];
        identities.push_back("desk/" + camera.name + (time > 1 ? "#" + std::to_string(time) : ""));
    }
    return identities;
}

constexpr std::chrono::seconds missingFor{1};

} // namespace

DeskBackend::DeskBackend(const DeskConfig& desk, std::filesystem::path file)
    : file_(std::move(file)), read_(stampOfFile()), seen_(read_)
{
    lay(desk);
}

DeskBackend::Stamp DeskBackend::stampOfFile() const
{
    std::error_code missing;
    Stamp stamp{std::filesystem::last_write_time(file_, missing), 0};
    stamp.size = std::filesystem::file_size(file_, missing);
    return stamp;
}

void DeskBackend::lay(const DeskConfig& desk)
{
    identities_ = identitiesOf(desk.cameras);
    cameras_.clear();
    for (size_t i = 0; i < identities_.size(); ++i)
        cameras_.emplace(identities_[i], desk.cameras[i]);
    for (auto plug = plugs_.begin(); plug != plugs_.end();) {
        const bool stays = cameras_.count(plug->first) > 0;
        if (!stays)
            plug->second->pull();
        plug = stays ? std::next(plug) : plugs_.erase(plug);
    }
    for (const std::string& identity : identities_)
        plugs_.try_emplace(identity, std::make_shared<DeskPlug>());
}

void DeskBackend::readAgain()
{
    const Stamp now = stampOfFile();
    const bool rests = now == std::exchange(seen_, now); // else it may be half written
    if (file_.empty() || !rests || now == read_)
        return;
    read_ = now;
    std::string error;
    if (const auto desk = DeskConfig::load(file_, error))
        lay(*desk);
    else
        std::fprintf(stderr, "virtual desk left as it was: %s\n", error.c_str());
}

std::vector<CameraInfo> DeskBackend::enumerate()
{
    const std::lock_guard lock(mutex_);
    readAgain();
    std::vector<CameraInfo> cameras;
    for (const std::string& identity : identities_) {
        std::shared_ptr<DeskPlug>& plug = plugs_[identity];
        if (plug->isOutSince(WakeEvent::Clock::now() - missingFor))
            plug = std::make_shared<DeskPlug>();
        if (plug->isIn())
            cameras.push_back(infoOf(identity));
    }
    return cameras;
}

CameraInfo DeskBackend::infoOf(const std::string& identity) const
{
    const DeskConfig::Camera& camera = cameras_.at(identity);
    CameraInfo info;
    info.name = camera.name;
    info.usbId = camera.usbId;
    info.identity = identity;
    info.type = camera.type;
    info.refused = camera.refused;
    info.address = identity;
    if (info.type == 0) // the pictures are looked at only when the type depends on their size
        info.largestPixels = largestPixels(camera);
    return info;
}

std::unique_ptr<CameraDevice> DeskBackend::open(const CameraInfo& info, MirvakResult& why)
{
    const std::lock_guard lock(mutex_);
    const auto found = cameras_.find(info.address);
    why = found != cameras_.end() && found->second.refused ? MIRVAK_NO_ACCESS : MIRVAK_NO_DEVICE;
    if (found == cameras_.end() || found->second.refused || found->second.failCreate ||
        !plugs_[info.address]->isIn()) {
        std::fprintf(stderr, "virtual camera \"%s\" cannot be opened\n", info.name.c_str());
        return nullptr;
    }
    const DeskConfig::Camera& camera = found->second;
    PictureSource pictures(PictureSource::filesOf(camera.source));
    const std::vector<CameraMode> modes = modesOf(camera, pictures);
    if (pictures.count() == 0 || modes.empty()) {
        std::fprintf(stderr,
                     "virtual camera \"%s\": no picture to play in %s\n",
                     camera.name.c_str(),
                     camera.source.c_str());
        return nullptr;
    }
    return std::make_unique<DeskDevice>(camera, modes, plugs_[info.address]);
}

} // namespace mirvak

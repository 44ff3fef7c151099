#pragma once

#include "CameraBackend.h"
#include "DeskConfig.h"
#include "DeskPlug.h"

#include <map>
#include <mutex>

namespace mirvak {

/// The cameras of the virtual desk.
class DeskBackend : public CameraBackend
{
public:
    /// With a file, the desk follows it: a camera that is no longer in it is unplugged, a new one plugged in;
    /// what has changed of one that stays holds when it is opened next.
    explicit DeskBackend(const DeskConfig& desk, std::filesystem::path file = {});

    /// A camera that has pulled itself out is missing for a second.
    std::vector<CameraInfo> enumerate() override;
    std::unique_ptr<CameraDevice> open(const CameraInfo& camera, MirvakResult& why) override;

private:
    struct Stamp
    {
        std::filesystem::file_time_type time{};
        std::uintmax_t size = 0;
        bool operator==(const Stamp& other) const { return time == other.time && size == other.size; }
    };

    Stamp stampOfFile() const;
    void readAgain();
    void lay(const DeskConfig& desk);
    CameraInfo infoOf(const std::string& identity) const;

    const std::filesystem::path file_;
    Stamp read_, seen_;
    std::mutex mutex_; // guards what follows
    std::vector<std::string> identities_;
    std::map<std::string, DeskConfig::Camera> cameras_; // by identity, like the plugs
    std::map<std::string, std::shared_ptr<DeskPlug>> plugs_;
};

} // namespace mirvak

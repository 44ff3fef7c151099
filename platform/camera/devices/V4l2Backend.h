#pragma once

#include "CameraBackend.h"
#include "CameraIdentities.h"

#include <ctime>
#include <map>
#include <optional>
#include <sys/types.h>

namespace mirvak {

/// The capture devices of the kernel under /dev/video*.
class V4l2Backend : public CameraBackend
{
public:
    /// One entry for each camera: nodes for metadata, for output and for formats that the library does not
    /// decode are left out, and so is a second colour or a second grey node of the same USB interface. A node
    /// is opened when it is new or its rights have changed.
    std::vector<CameraInfo> enumerate() override;
    std::unique_ptr<CameraDevice> open(const CameraInfo& camera, MirvakResult& why) override;

private:
    /// What is remembered of a node, good as long as its number in the file system and the time of its last
    /// change are the same.
    struct Node
    {
        ino_t number = 0;
        timespec changed{};
        std::optional<CameraInfo> camera; ///< nothing for a node that is no camera of ours
        CameraIdentities::Facts facts;
        bool isCertain = false; ///< else it is asked again each time
    };

    static void ask(const std::string& path, Node& node);
    void look();

    std::map<int, Node> nodes_; // by the number in the name
    CameraIdentities identities_;
};

} // namespace mirvak

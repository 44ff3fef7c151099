#pragma once

#include <map>
#include <string>
#include <vector>

namespace mirvak {

/// Names cameras on the USB so that each keeps its name while it is there and gets it again when it comes
/// back: by its serial number at whatever port, as long as no other one has claimed the same number. Such
/// twins, and cameras without a number, go by their ports. One thread at a time.
class CameraIdentities
{
public:
    struct Facts
    {
        std::string usbId;
        std::string serial;   ///< empty without one
        std::string port;     ///< the place on the bus, as "1-4.2"
        std::string function; ///< which of the device's cameras
    };

    /// The names of all that are there now, in their order.
    std::vector<std::string> name(const std::vector<Facts>& present);

private:
    struct Owner
    {
        std::string port;
        bool hasTwin = false;
    };
    std::map<std::string, Owner> owners_; // by id, serial number and function
};

} // namespace mirvak

#include "zaz.h"

#include "BmpFile.h"
#include "Session.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <map>

namespace {

using mirvak::Session;

constexpr int onlyMode = 0, usb = 1, usbDevice = 2;
constexpr int sensorsAtMost = 3;

/// All handles. One at a time has the sensor, the newest.
class Desk
{
public:
    /// Never destroyed: a worker of the program may be inside a call when that ends.
    static Desk& instance()
    {
        static Desk& desk = *new Desk;
        return desk;
    }

    int open()
    {
        const std::lock_guard lock(mutex_);
        for (const auto& [handle, session] : sessions_)
            session->giveUp();
        sessions_[++last_] = std::make_shared<Session>(number_);
        return last_;
    }
    std::shared_ptr<Session> find(int handle)
    {
        const std::lock_guard lock(mutex_);
        const auto found = sessions_.find(handle);
        return found == sessions_.end() ? nullptr : found->second;
    }
    bool close(int handle)
    {
        std::shared_ptr<Session> closed = find(handle); // whose end, outside the lock, waits for the sensor
        const std::lock_guard lock(mutex_);
        return sessions_.erase(handle) > 0;
    }
    void choose(int number)
    {
        const std::lock_guard lock(mutex_);
        number_ = number;
    }

private:
    std::mutex mutex_; ///< of all that follows
    std::map<int, std::shared_ptr<Session>> sessions_;
    int last_ = 0;
    int number_ = 1; ///< of the sensor that the next handle gets
};

// No exception leaves the library.
template <class Call> int guarded(const char* name, Call&& call) noexcept
{
    try {
        return call();
    } catch (const std::exception& error) { // no memory
        std::fprintf(stderr, "%s: %s\n", name, error.what());
        return ZAZ_NO_MEMORY;
    }
}

template <class Call> int withSession(const char* name, int handle, Call&& call) noexcept
{
    return guarded(name, [&] {
        const std::shared_ptr<Session> session = Desk::instance().find(handle);
        return session ? call(*session) : ZAZ_BAD_ARGUMENT;
    });
}

} // namespace

int ZAZ_MODE(int mode)
{
    return mode == onlyMode ? ZAZ_OK : ZAZ_BAD_ARGUMENT;
}

int ZAZ_SETPATH(int mode, int path)
{
    if (mode < 1 || mode > sensorsAtMost || path != usb)
        return ZAZ_BAD_ARGUMENT;
    Desk::instance().choose(mode);
    return ZAZ_OK;
}

int ZAZOpenDeviceEx(int* handle, int type, void*, int, int)
{
    return guarded("ZAZOpenDeviceEx", [&] {
        if (!handle || type != usbDevice)
            return ZAZ_BAD_ARGUMENT;
        *handle = Desk::instance().open();
        return ZAZ_OK;
    });
}

int ZAZVfyPwd(int handle, unsigned, const unsigned char* password)
{
    constexpr unsigned char noPassword[4] = {};
    if (!password || std::memcmp(password, noPassword, sizeof noPassword) != 0)
        return ZAZ_BAD_ARGUMENT;
    return withSession("ZAZVfyPwd", handle, [](Session& session) { return session.verify(); });
}

int ZAZGetImage(int handle, unsigned)
{
    return withSession("ZAZGetImage", handle, [](Session& session) { return session.getImage(); });
}

int ZAZUpImage(int handle, unsigned, unsigned char* pixels, int* length)
{
    if (!pixels)
        return ZAZ_BAD_ARGUMENT;
    return withSession("ZAZUpImage", handle, [&](Session& session) {
        const ZazResult result = session.upImage(pixels);
        if (length)
            *length = result == ZAZ_OK ? ZAZ_BYTES : 0;
        return result;
    });
}

int ZAZImgData2BMP(const unsigned char* pixels, const char* path)
{
    return guarded("ZAZImgData2BMP", [&] {
        if (!pixels || !path || !*path)
            return ZAZ_BAD_ARGUMENT;
        return mirvak::writeFingerBmp(pixels, path) ? ZAZ_OK : ZAZ_IO_ERROR;
    });
}

int ZAZCloseDeviceEx(int handle)
{
    return guarded("ZAZCloseDeviceEx",
                   [&] { return Desk::instance().close(handle) ? ZAZ_OK : ZAZ_BAD_ARGUMENT; });
}

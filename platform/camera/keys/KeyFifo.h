#pragma once

#include "UniqueFd.h"

#include <filesystem>
#include <functional>
#include <string>

namespace mirvak {

/// The keys of the virtual desk: a named pipe in which each line with a number presses that key.
class KeyFifo
{
public:
    /// Opens the pipe and makes it when it is missing. Invalid, and a line on standard error, when that fails
    /// or something else has the name.
    explicit KeyFifo(const std::filesystem::path& path);

    bool isValid() const { return fd_.isValid(); }
    int fd() const { return fd_.get(); }
    /// Reads what has been written, without waiting, and reports each complete line that is a number. Other
    /// lines are left out.
    void read(const std::function<void(int)>& press);

private:
    void take(char character, const std::function<void(int)>& press);

    UniqueFd fd_;
    std::string line_;
    bool overlong_ = false;
};

} // namespace mirvak

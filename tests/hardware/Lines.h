#pragma once

#include "waitFor.h"

#include <string>

#include <poll.h>
#include <unistd.h>

/// What another process says, line by line.
class Lines
{
public:
    explicit Lines(int descriptor = -1) : descriptor_(descriptor) {}

    /// Waits for the next line; empty when none comes.
    std::string next()
    {
        size_t end = 0;
        while ((end = unread_.find('\n')) == std::string::npos) {
            pollfd readable{descriptor_, POLLIN, 0};
            const int limit = int(std::chrono::milliseconds(patience).count());
            char buffer[512];
            const ssize_t count =
                poll(&readable, 1, limit) > 0 ? read(descriptor_, buffer, sizeof buffer) : 0;
            if (count <= 0)
                return {};
            unread_.append(buffer, std::size_t(count));
        }
        const std::string line = unread_.substr(0, end);
        unread_.erase(0, end + 1);
        return line;
    }

private:
    int descriptor_;
    std::string unread_;
};

#pragma once

#include "Messages.h"

#include <string_view>

namespace mirvak::helper {

/// Sends what was read, one packet each, as soon as it was read: what follows may end this process.
class Answers
{
public:
    void code(Reading reading, std::string_view bytes) const;
    void end() const;

private:
    static void send(const Reading& reading, std::string_view bytes);
};

/// The picture of one request: 8-bit grey, rows without padding.
struct Picture
{
    const unsigned char* pixels;
    int width;
    int height;
};

} // namespace mirvak::helper

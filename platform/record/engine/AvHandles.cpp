#include "AvHandles.h"

namespace mirvak {

std::string avText(int error)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return text;
}

} // namespace mirvak

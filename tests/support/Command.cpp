#include "Command.h"

#include <array>
#include <cstdio>

namespace tools {

std::string run(const std::string& command)
{
    std::string text;
    FILE* pipe = popen(("( " + command + " ) 2>&1").c_str(), "r");
    std::array<char, 4096> part;
    while (const size_t count = std::fread(part.data(), 1, part.size(), pipe))
        text.append(part.data(), count);
    const int status = pclose(pipe);
    if (status != 0)
        text += "exit " + std::to_string(WEXITSTATUS(status));
    return text;
}

} // namespace tools

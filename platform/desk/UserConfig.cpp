#include "UserConfig.h"

#include <cstdlib>

std::filesystem::path userConfigFile(const char* name)
{
    const char* config = std::getenv("XDG_CONFIG_HOME");
    if (config && *config == '/')
        return std::filesystem::path(config) / "lumro" / name;
    const char* home = std::getenv("HOME");
    if (home && *home)
        return std::filesystem::path(home) / ".config" / "lumro" / name;
    return {};
}

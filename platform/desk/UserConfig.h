#pragma once

#include <filesystem>

/// $XDG_CONFIG_HOME/lumro/`name`, or below ~/.config; empty when neither is known.
std::filesystem::path userConfigFile(const char* name);

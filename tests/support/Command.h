#pragma once

#include <string>

namespace tools {

/// Runs a command line of the shell. @return what it prints, also as an error, with its exit code when not 0
std::string run(const std::string& command);

} // namespace tools

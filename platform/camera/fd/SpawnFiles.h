#pragma once

#include <fcntl.h>
#include <initializer_list>
#include <spawn.h>
#include <unistd.h>

namespace mirvak {

/// What a helper program that posix_spawn() starts gets of this process: an empty input, no output, the
/// descriptors that it is given, and nothing else.
class SpawnFiles
{
public:
    struct Given
    {
        int fd; ///< another one than those that it and the others become
        int as; ///< its number in the helper
    };
    enum class Errors { drop, pass }; ///< what the helper writes on its standard error

    /// @param given  in the order of their numbers, which follow those of the standard streams
    SpawnFiles(std::initializer_list<Given> given, Errors errors)
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDOUT_FILENO);
        if (errors == Errors::drop)
            posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDERR_FILENO);
        int last = STDERR_FILENO;
        for (const Given& one : given) {
            posix_spawn_file_actions_adddup2(&actions_, one.fd, one.as);
            last = one.as;
        }
        posix_spawn_file_actions_addclosefrom_np(&actions_, last + 1);
    }
    ~SpawnFiles() { posix_spawn_file_actions_destroy(&actions_); }
    SpawnFiles(const SpawnFiles&) = delete;
    SpawnFiles& operator=(const SpawnFiles&) = delete;

    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

} // namespace mirvak

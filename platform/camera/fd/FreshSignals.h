#pragma once

#include <csignal>
#include <spawn.h>

namespace mirvak {

/// Attributes of a program to be started: signals as a fresh one expects them, whatever the caller's thread
/// blocks or ignores.
class FreshSignals
{
public:
    FreshSignals()
    {
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~FreshSignals() { posix_spawnattr_destroy(&attributes_); }
    FreshSignals(const FreshSignals&) = delete;
    FreshSignals& operator=(const FreshSignals&) = delete;
    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_;
};

} // namespace mirvak

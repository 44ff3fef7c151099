#pragma once

#include <functional>
#include <string>

/// What disk and encoder do to a film; without it they work.
struct Trouble
{
    /// Called before a file is synced; may wait.
    static std::function<void()> onSync;
    /// Called before each picture is encoded; false: the encoder fails.
    static std::function<bool()> onEncode;

    /// Until no thread of this name runs.
    static void awaitEndOf(const std::string& thread);

    Trouble() = default;
    Trouble(const Trouble&) = delete;
    Trouble& operator=(const Trouble&) = delete;
    ~Trouble() { onSync = nullptr, onEncode = nullptr; }
};

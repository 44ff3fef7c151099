#pragma once

#include "Lines.h"

#include <sys/types.h>

/// A process of its own, with the rights of a user, that listens to the keys of the cameras.
class KeyUser
{
public:
    explicit KeyUser(uid_t user);
    ~KeyUser();
    KeyUser(const KeyUser&) = delete;
    KeyUser& operator=(const KeyUser&) = delete;

    /// Whether it has a button open and waits for it. What is pressed before is heard by nobody: the kernel
    /// forgets it when the listener, having opened the device, asks for the keys' state.
    bool waitsForKeys() const;
    /// Waits for what it says: "key N" for a press, and its lines on standard error. Empty when nothing
    /// comes.
    std::string nextLine() { return says_.next(); }

private:
    pid_t process_ = -1;
    int output_ = -1;
    Lines says_;
};

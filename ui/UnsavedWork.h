#pragma once

#include <QString>

/// A window that may hold what its closing would lose. The Escape key, which is hit by mistake, then asks
/// before it closes the window.
class UnsavedWork
{
public:
    virtual ~UnsavedWork() = default;
    /// The question whether to close all the same; empty when nothing would be lost.
    virtual QString questionBeforeClosing() const = 0;
};

#pragma once

#include <functional>
#include <optional>
#include <string>

/// The calls by which files get their names, between the tested code and the system: file systems that know
/// less than the machine's own, a power cut, and other programs in the worst moment.
struct FileSystem
{
    bool refusesToReplace = true; ///< knows a rename that does
    bool knowsLinks = true;
    std::function<void()> beforeNaming; ///< once, when a new file is about to get its name

    /// The size in bytes that `path` would have if the power had been cut just now; nothing when it would not
    /// be there. Knows files that got their name while this object lived.
    static std::optional<off_t> sizeAfterPowerCut(const std::string& path);

    FileSystem();
    ~FileSystem();
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
};

#pragma once

#include <cstddef>
#include <string>

namespace mirvak {

/// Writes a file that appears under its name only when it is complete: a hidden temporary in the same folder
/// is filled, synced and renamed. Whatever goes wrong before that, nothing is left behind. The first failure
/// prints one line with the path and the reason on standard error; later calls then do nothing.
class AtomicFile
{
public:
    /// `path` in UTF-8. An existing file of that name stays untouched until commit().
    explicit AtomicFile(std::string path);
    /// Removes the temporary when commit() did not succeed.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    bool failed() const { return failed_; } ///< and has printed its line
    bool write(const void* data, size_t bytes);
    /// For a library that fills a file by its name, instead of write(). Empty after failed() or commit().
    const std::string& temporary() const { return temporary_; }
    /// @return true when the file stands complete, synced, under its name.
    bool commit();

private:
    bool open();
    bool fail();

    std::string path_;
    std::string folder_;
    std::string temporary_; ///< empty when no temporary exists
    int fd_ = -1;
    bool failed_ = false;
};

} // namespace mirvak

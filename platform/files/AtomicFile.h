#pragma once

#include "UniqueFd.h"

#include <cstddef>
#include <string>

namespace mirvak {

/// What becomes of a file that already has the name.
enum class IfTaken {
    refuse, ///< it stays, and the new one is not written: for everything that a user has not seen yet
    replace ///< for a file that is the next state of the old one
};

/// Who may read the file.
enum class Readers {
    all,  ///< as the user's mask allows
    owner ///< the user alone; its name may tell of a person, so messages name only its folder
};

/// Writes a file that appears under its name only when it is complete: a hidden temporary in the same folder
/// is filled, synced and renamed. Whatever goes wrong before that, nothing is left behind; what a killed
/// process leaves is taken away by removeLeftOvers(). The first failure prints one line with the path and the
/// reason on standard error; later calls then do nothing.
class AtomicFile
{
public:
    enum class Commit {
        done,   ///< the file stands complete, synced, under its name
        taken,  ///< refused: something has that name. Nothing was printed; the caller chooses another.
        failed, ///< the line was printed
    };

    /// `path` in UTF-8. An existing file of that name stays untouched until commit().
    AtomicFile(std::string path, IfTaken ifTaken, Readers readers = Readers::all);
    /// Removes the temporary when commit() did not succeed.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    bool failed() const { return failed_; } ///< and has printed its line
    bool write(const void* data, size_t bytes);
    /// For a library that fills a file by its name, instead of write(). Empty after failed() or commit().
    const std::string& temporary() const { return temporary_; }
    /// Final: after anything but done, make another AtomicFile.
    Commit commit();

private:
    bool open();
    bool flush();
    int rename();
    bool fail(int error);

    std::string path_;
    std::string folder_;
    IfTaken ifTaken_;
    Readers readers_;
    std::string temporary_; ///< empty when no temporary exists
    UniqueFd file_;         ///< its lock says that the temporary is being written
    bool failed_ = false;
};

} // namespace mirvak

#pragma once

#include "UniqueFd.h"

#include <QString>

#include <vector>

/// The files of one deletion. They leave their names at once but can be brought back for as long as this
/// object lives; with it they are gone for good. Meanwhile each lies in its own folder under a hidden name of
/// the kind ".lumro-*.tmp", locked by this process: what a killed process leaves is removed by the next
/// start. Trouble is told in one line each on standard error. One thread at a time.
class DeletedFiles
{
public:
    DeletedFiles() = default;
    ~DeletedFiles();
    DeletedFiles(const DeletedFiles&) = delete;
    DeletedFiles& operator=(const DeletedFiles&) = delete;

    /// @return false when the file stays where it is; folders are never taken
    bool take(const QString& path);
    /// Brings a taken file back, under a name of its own when another file has taken its name meanwhile.
    /// @return where it is now; empty when it could not be brought back and can be asked for again
    QString putBack(const QString& path);

private:
    struct Taken
    {
        QString path;
        QString hidden;
        mirvak::UniqueFd lock; ///< none where the file cannot be opened or many are held already
    };
    std::vector<Taken> taken_;
};

#pragma once

#include "HiddenFile.h"

#include <QString>

#include <vector>

/// The files of one deletion. They leave their names at once but can be brought back for as long as this
/// object lives; with it they are gone for good. Trouble is told in one line each on standard error. One
/// thread at a time.
class DeletedFiles
{
public:
    /// @return false when the file stays where it is; folders are never taken
    bool take(const QString& path);
    /// Brings a taken file back, under a name of its own when another file has taken its name meanwhile.
    /// @return where it is now; empty when it could not be brought back and can be asked for again
    QString putBack(const QString& path);

private:
    struct Taken
    {
        QString path;
        HiddenFile file;
    };
    std::vector<Taken> taken_;
};

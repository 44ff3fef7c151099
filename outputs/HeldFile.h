#pragma once

#include "UniqueFd.h"

#include <QString>

#include <sys/stat.h>

#include <vector>

/// A file that stays readable as it is now when it is renamed, replaced or deleted meanwhile. Movable; one
/// thread at a time.
class HeldFile
{
public:
    explicit HeldFile(const QString& path);

    /// Under which it is read; good while this object lives. The file's own where the process holds many
    /// already.
    QString path() const;
    /// Whether what path() reads is still what it was.
    bool isUnchanged() const;
    /// Whether both are the same file in the same state.
    bool isSameAs(const HeldFile& other) const;

private:
    bool look(struct stat& about) const;

    QString path_;
    mirvak::UniqueFd file_;
    bool exists_ = false;
    struct stat before_
    {
    };
};

using HeldFiles = std::vector<HeldFile>;

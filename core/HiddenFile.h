#pragma once

#include "UniqueFd.h"

#include <QString>

/// A file of the user's that lies aside: in its own folder under a hidden name of the kind ".lumro-*.tmp",
/// locked by this process, so that what a killed process leaves is removed by the next start. It is removed
/// with this object unless it was brought back. Moving says 0 or an errno. One thread at a time.
class HiddenFile
{
public:
    HiddenFile() = default;
    ~HiddenFile();
    HiddenFile(HiddenFile&& other) noexcept;
    HiddenFile& operator=(HiddenFile&& other) noexcept;

    /// A hidden name beside `path` that this process has not given out yet.
    static QString nameBeside(const QString& path);

    /// Hides the file `path`, which is no folder.
    int hide(const QString& path);
    /// Takes over a file that was written under a name of nameBeside().
    void adopt(const QString& hidden);
    /// Gives the file a name that nothing has yet; EEXIST otherwise.
    int bringBack(const QString& place);
    /// Gives the file the name `path` and hides the one that has it, in one step where the file system can.
    int changePlaces(const QString& path);

private:
    void lock();

    QString hidden_;        ///< empty when there is none
    mirvak::UniqueFd lock_; ///< none where the file cannot be opened or many are held already
};

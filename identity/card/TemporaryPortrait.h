#pragma once

#include <QPixmap>

/// The file into which the reader library puts the portrait of the card that it reads: it goes with its
/// window.
class TemporaryPortrait
{
public:
    TemporaryPortrait() = default;
    ~TemporaryPortrait();
    TemporaryPortrait(const TemporaryPortrait&) = delete;
    TemporaryPortrait& operator=(const TemporaryPortrait&) = delete;

    /// From now on the file is the user's alone. Null when there is none, or it is not the user's own.
    QPixmap load(const QString& path);

private:
    QString path_;
};

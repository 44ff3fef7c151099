#pragma once

#include "Camera.h"

#include <QMap>
#include <QStringList>

#include <chrono>

/// Which camera is to be opened without being asked for: what belongs together, and what was meant. It is
/// told what happens and knows no device and no clock. GUI thread only.
class CameraChoice
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// The cameras that are there now; those of the first call were there when the program started.
    void listed(const Cameras& cameras, Time now);
    /// The user has chosen it; it may fail to open.
    void chosen(const QString& identity, Time now);
    /// It works.
    void opened(const QString& identity);
    /// It worked and is gone.
    void lost(const QString& identity, Time now);

    /// While no camera works: those to be tried, the best first. The one that the user chose, the one that
    /// was lost, what has been plugged in since, whatever its kind; at the start the first main document
    /// camera.
    QStringList candidates() const;
    /// While one works: the one to change to, or empty. The lost one, when it is back within ten seconds; the
    /// document head of a camera whose other head was there first. What the user chose is kept.
    QString better(Time now) const;

private:
    const Camera* find(const QString& identity) const;

    Cameras cameras_;
    QMap<QString, Time> arrivals_;
    bool isStarted_ = false;
    Time idleSince_{}; // when the last one stopped working
    QString wanted_;   // chosen by the user
    QString open_;
    QString lost_;
    Time lostAt_{};
};

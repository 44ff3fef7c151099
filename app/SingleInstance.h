#pragma once

#include <QSharedMemory>

/// Says whether this is the only running instance and keeps others out while it lives.
class SingleInstance
{
public:
    explicit SingleInstance(const QString& key) : segment_(key) {}

    /// False when another instance runs. A segment that a crashed instance left behind is taken over.
    bool acquire();

private:
    QSharedMemory segment_;
};

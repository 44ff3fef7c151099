#pragma once

#include "UniqueFd.h"

#include <QByteArray>
#include <QObject>

#include <chrono>

/// A name of which the kernel gives each user only one, and takes it back when its owner dies, however that
/// happens. Whoever finds it taken has thereby asked the owner to come forward. GUI thread only.
class InstanceSocket : public QObject
{
    Q_OBJECT

public:
    /// Instances with the same `name` exclude each other, for this user.
    explicit InstanceSocket(const QByteArray& name);
    ~InstanceSocket() override { release(); }

    enum class Claim { Ours, Taken, Unavailable };
    /// Unavailable: the kernel does not allow it; a line on standard error says why.
    Claim claim();
    void release();

    enum class Answer { Forward, Ended, None };
    /// Waits, after Taken, for the owner to answer that it has come forward. Ended: it ended instead.
    Answer await(std::chrono::milliseconds patience) const;

Q_SIGNALS:
    /// To the owner: another start asks it to come forward; it is answered after this.
    void asked();

private:
    bool bindName();
    Claim ask();
    void answer();

    QByteArray address_;
    mirvak::UniqueFd listening_;
    mirvak::UniqueFd asking_;
};

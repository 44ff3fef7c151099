#pragma once

#include "InstanceSocket.h"

#include <QSharedMemory>

/// Keeps the user's other starts out while this instance lives, and tells it when one of them asks it to come
/// forward. Two users do not hinder each other. GUI thread only.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    /// `key` is the name of the application.
    explicit SingleInstance(const QString& key);

    enum class Start {
        Runs,    ///< this is the only one; what a crashed one left behind is taken over
        Forward, ///< another one runs and has come forward
        Silent,  ///< another one runs but does not answer
    };
    /// Waits at most `patience` for the answer of another one.
    Start start(std::chrono::milliseconds patience);
    /// From now on another instance may start.
    void release();

Q_SIGNALS:
    void asked();

private:
    bool isHeldByAnother();
    bool isOfAnotherUser() const;

    QSharedMemory segment_;
    InstanceSocket socket_;
};

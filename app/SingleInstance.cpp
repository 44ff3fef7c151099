#include "SingleInstance.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <unistd.h>

SingleInstance::SingleInstance(const QString& key)
    : segment_(key), socket_(QFile::encodeName(segment_.nativeKey()))
{
    connect(&socket_, &InstanceSocket::asked, this, &SingleInstance::asked);
}

// The socket is the proof, since the kernel ends it with its owner. The segment is what versions without one
// know.
SingleInstance::Start SingleInstance::start(std::chrono::milliseconds patience)
{
    while (socket_.claim() == InstanceSocket::Claim::Taken) {
        const InstanceSocket::Answer answer = socket_.await(patience);
        if (answer != InstanceSocket::Answer::Ended)
            return answer == InstanceSocket::Answer::Forward ? Start::Forward : Start::Silent;
    }
    if (!isHeldByAnother())
        return Start::Runs;
    socket_.release();
    return Start::Silent;
}

/// Takes the segment unless a living process has it.
bool SingleInstance::isHeldByAnother()
{
    // A crash may leave a segment whose key file is gone: it is met only when the file has been made anew.
    for (int attempt = 0; attempt < 2 && !isOfAnotherUser(); ++attempt) {
        // The last one to detach removes the segment. So one that can be attached to, left and attached to
        // again is held by a living process; one that a crash left behind is gone after the first round.
        if (segment_.attach() && segment_.detach() && segment_.attach()) {
            segment_.detach();
            return true;
        }
        if (segment_.create(1))
            return false;
    }
    return false;
}

/// Of the file that stands for the segment: who made it first owns both.
bool SingleInstance::isOfAnotherUser() const
{
    const QFileInfo file(segment_.nativeKey());
    return file.exists() && file.ownerId() != geteuid();
}

void SingleInstance::release()
{
    segment_.detach();
    socket_.release();
}

#include "SingleInstance.h"

#include <cstdio>

bool SingleInstance::acquire()
{
    // The last one to detach removes the segment. So a segment that can be attached to, left and attached to
    // again is held by a living process; one that a crash left behind is gone after the first round.
    if (segment_.attach()) {
        segment_.detach();
        if (segment_.attach()) {
            segment_.detach();
            return false;
        }
    }
    if (segment_.create(1))
        return true;
    if (segment_.error() == QSharedMemory::AlreadyExists)
        return false; // another instance was faster
    std::fprintf(
        stderr, "start: no guard against a second instance (%s)\n", qUtf8Printable(segment_.errorString()));
    return true;
}

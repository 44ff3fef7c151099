#include "Job.h"

#include <algorithm>

namespace {

template <class Number> void raise(std::atomic<Number>& value, Number to)
{
    Number now = value;
    while (now < to && !value.compare_exchange_weak(now, to)) {
    }
}

} // namespace

void Job::reach(double progress)
{
    raise(progress_, std::min(progress, 1.0));
}

void Job::reach(int done, int count, double from)
{
    if (count < 1)
        return;
    count_ = count;
    raise(done_, std::min(done, count));
    reach(from + (1 - from) * done / count);
}

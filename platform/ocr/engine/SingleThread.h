#pragma once

#include <omp.h>

namespace mirvak {

/// Within its scope the calling thread opens no parallel regions. Tesseract's are so short that handing them
/// to other threads makes it 3 to 50 times slower on a busy machine; their number is fixed in its code, so
/// that limiting the threads has no effect.
class SingleThread
{
public:
    SingleThread() : levels_(omp_get_max_active_levels()) { omp_set_max_active_levels(0); }
    ~SingleThread() { omp_set_max_active_levels(levels_); }
    SingleThread(const SingleThread&) = delete;
    SingleThread& operator=(const SingleThread&) = delete;

private:
    int levels_;
};

} // namespace mirvak

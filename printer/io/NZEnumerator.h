#pragma once

#include <cstddef>

/// Lists devices.
class NZEnumerator
{
public:
    NZEnumerator() = default;
    NZEnumerator(const NZEnumerator&) = delete;
    NZEnumerator& operator=(const NZEnumerator&) = delete;
    virtual ~NZEnumerator() = default;

    /// Fills `buf` with paths, each with its terminating zero, as far as `size` bytes reach.
    /// @param total unless null, gets the sum of the paths' lengths, each with two bytes more
    /// @return the number of paths
    virtual int Enumerate(char* buf, std::size_t size, std::size_t* total) = 0;
};

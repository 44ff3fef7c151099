#pragma once

#include "SmallLook.h"

#include <array>
#include <bitset>
#include <vector>

namespace mirvak {

/// The colours of the desk, learnt from the rim of the picture: a sheet may reach it somewhere, not
/// everywhere.
class DeskColours
{
public:
    void learn(const SmallLook::Planes& planes);
    bool contain(const std::array<int, 3>& colour) const { return usual_[indexOf(colour)]; }

private:
    static constexpr int bits = 4;
    static size_t indexOf(const std::array<int, 3>& colour)
    {
        return (static_cast<size_t>(colour[0] >> (8 - bits)) << 2 * bits) |
               (static_cast<size_t>(colour[1] >> (8 - bits)) << bits) |
               static_cast<size_t>(colour[2] >> (8 - bits));
    }
    std::vector<int> counts_;
    std::bitset<1 << 3 * bits> usual_;
};

} // namespace mirvak

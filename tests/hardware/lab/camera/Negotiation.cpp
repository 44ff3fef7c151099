#include "Negotiation.h"

#include <algorithm>

namespace lab {

namespace {

constexpr int probe = 1, commit = 2;

} // namespace

Negotiation::Negotiation(const CameraModel& model) : model_(model)
{
    correct();
}

bool Negotiation::isCommit(const Setup& setup)
{
    return setup.request == SET_CUR && setup.selector() == commit;
}

StreamChoice Negotiation::choice() const
{
    return {proposal_.format, proposal_.frame - 1, proposal_.interval};
}

Answer Negotiation::request(const Setup& setup, const Bytes& data)
{
    if (setup.selector() != probe && setup.selector() != commit)
        return std::nullopt;
    auto* const bytes = reinterpret_cast<std::uint8_t*>(&proposal_);
    switch (setup.request) {
    case SET_CUR:
        std::copy_n(data.begin(), std::min(data.size(), sizeof proposal_), bytes);
        correct();
        return Bytes();
    case GET_LEN:
        return Bytes{std::uint8_t(sizeof proposal_), 0};
    case GET_INFO:
        return Bytes{3};
    default:
        return Bytes(bytes, bytes + sizeof proposal_);
    }
}

void Negotiation::correct()
{
    proposal_.format = std::clamp<int>(proposal_.format, 1, 2);
    proposal_.frame = std::clamp<int>(proposal_.frame, 1, int(model_.sizes.size()));
    const std::uint32_t wanted = proposal_.interval;
    // The shortest interval that is not below the wanted one, with some allowance for rounding.
    proposal_.interval = *std::find_if(std::begin(frameIntervals),
                                       std::end(frameIntervals) - 1,
                                       [&](std::uint32_t interval) { return wanted <= interval + 5000; });
    proposal_.frameBytes = model_.sizes[proposal_.frame - 1].byteLimit();
    proposal_.payloadBytes = proposal_.frameBytes + 64;
}

} // namespace lab

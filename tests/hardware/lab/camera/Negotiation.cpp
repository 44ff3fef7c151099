#include "Negotiation.h"

#include <algorithm>

namespace lab {

namespace {

constexpr int probe = 1, commit = 2;
// Offsets in the proposal.
constexpr int formatAt = 2, frameAt = 3, intervalAt = 4, frameBytesAt = 18, payloadBytesAt = 22;

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
    return {proposal_[formatAt], proposal_[frameAt] - 1, read32(&proposal_[intervalAt])};
}

Answer Negotiation::request(const Setup& setup, const Bytes& data)
{
    if (setup.selector() != probe && setup.selector() != commit)
        return std::nullopt;
    switch (setup.request) {
    case SET_CUR:
        std::copy_n(data.begin(), std::min(data.size(), proposal_.size()), proposal_.begin());
        correct();
        return Bytes();
    case GET_LEN:
        return Bytes{std::uint8_t(proposal_.size()), 0};
    case GET_INFO:
        return Bytes{3};
    default:
        return Bytes(proposal_.begin(), proposal_.end());
    }
}

void Negotiation::correct()
{
    proposal_[formatAt] = std::clamp<int>(proposal_[formatAt], 1, 2);
    proposal_[frameAt] = std::clamp<int>(proposal_[frameAt], 1, int(model_.sizes.size()));
    const std::uint32_t wanted = read32(&proposal_[intervalAt]);
    // The shortest interval that is not below the wanted one, with some allowance for rounding.
    const auto* fits = std::find_if(std::begin(frameIntervals),
                                    std::end(frameIntervals) - 1,
                                    [&](std::uint32_t interval) { return wanted <= interval + 5000; });
    write32(&proposal_[intervalAt], *fits);
    const std::uint32_t limit = model_.sizes[proposal_[frameAt] - 1].byteLimit();
    write32(&proposal_[frameBytesAt], limit);
    write32(&proposal_[payloadBytesAt], limit + 64);
}

} // namespace lab

#pragma once

#include "CodeLocator.h"
#include "DecoderPool.h"
#include "Sightings.h"

namespace mirvak {

/// The passes over one picture. One thread at a time.
class CodeSearch
{
public:
    /// Both are borrowed for the life of this object.
    CodeSearch(const GreyFrame& frame, DecoderPool& pool);
    CodeSearch(const CodeSearch&) = delete; // its sightings ask it
    CodeSearch& operator=(const CodeSearch&) = delete;

    /// The frame as it is, and reduced.
    void lookAtWhole();
    /// The candidates that say nothing yet, each upright.
    void lookAtCandidates();
    /// Those that still say nothing, sharpened, and in other sizes.
    void lookHarder();
    /// Those that surely are matrix codes, at slightly different angles.
    void lookAgain();
    /// The readings that too little speaks for.
    void confirmWeakOnes();

    const std::vector<Candidate>& candidates() const { return candidates_; }
    const Sightings& sightings() const { return sightings_; }

private:
    struct Look
    {
        View view;
        std::uint32_t decoders;
        int step = 1;
        bool ofPart = true;
    };
    std::vector<Look> looksAtBars() const;
    void run(const std::vector<Look>& looks);
    void note(const Look& look, int pass, const helper::Reading& reading, std::string_view bytes);
    std::vector<int> homesOf(const cv::Rect2f& box) const;
    bool goOn(const Sighting& a, const Sighting& b) const;
    std::vector<Candidate> unread() const;
    bool fills(const Candidate& candidate) const;
    View viewOf(const Candidate& candidate, double enlarged) const;

    const GreyFrame& frame_;
    DecoderPool& pool_;
    std::vector<Candidate> candidates_;
    Sightings sightings_;
    int passes_ = 0;
};

} // namespace mirvak

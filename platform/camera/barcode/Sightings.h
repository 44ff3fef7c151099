#pragma once

#include "Symbology.h"

#include <opencv2/core.hpp>

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace mirvak {

/// One reading of one code in one view.
struct Sighting
{
    Symbology symbology = Symbology::qr;
    std::string bytes;
    bool isText = false;    ///< bytes are UTF-8 by the code's own word
    int lines = 0;          ///< scan lines that agree, for one-dimensional codes
    int pass = 0;           ///< readings of different passes were made independently
    std::vector<int> homes; ///< the candidates in which its middle lies
    bool ofPart = false;    ///< of a part of the frame: in the whole, equal codes are one to some decoders
    cv::Rect2f box;         ///< the upright rectangle around it, pixels of the frame
};

/// A code and all that speaks for it.
struct SeenCode
{
    Sighting best; ///< its box goes around those of all its parts
    std::set<int> passes;
    int lines = 0; ///< the most of one pass
    bool isCredible() const;
};

/// Whether the bars of one reading go on to the other one; asked about equal texts of one candidate.
using GoesOn = std::function<bool(const Sighting&, const Sighting&)>;

/// Puts the readings of one picture together: the same text at the same place is one code, a second label
/// with the same text is another one.
class Sightings
{
public:
    explicit Sightings(GoesOn goesOn = {}) : goesOn_(std::move(goesOn)) {}
    void add(Sighting sighting) { all_.push_back(std::move(sighting)); }
    /// Every code that was seen, credible or not.
    std::vector<SeenCode> codes() const;
    /// The credible ones; of two that contradict each other at one place the better founded, or none.
    std::vector<SeenCode> credible() const;

private:
    bool isSameCode(const Sighting& a, const Sighting& b) const;
    void joinTouching(std::vector<SeenCode>& codes) const;

    std::vector<Sighting> all_;
    GoesOn goesOn_;
};

} // namespace mirvak

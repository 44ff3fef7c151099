#pragma once

#include "Motion.h"

#include <optional>
#include <vector>

namespace deskpictures {

/// What happens in the page-turning film, without a pixel. Times are in frames, fractions included.
/// Pages are numbered as they come into sight: 0, 1, 2, and 0 again, so that the film can run round and
/// round.
class TurnScript
{
public:
    static constexpr int framesPerSecond = 15;
    static constexpr int pageCount = 3;

    int frameCount() const { return m_frameCount; }

    struct Moment
    {
        std::vector<int> lying;    ///< pages at rest, the lowest first
        std::optional<int> moving; ///< page in the hand
        Place movingPlace;         ///< only with moving
        std::optional<Place> hand; ///< fingertips and direction; none: out of sight
    };
    Moment at(double frame) const;

    /// Where a page rests.
    static Place restOf(int page);

    /// A time in which nothing but the light moves. Both ends belong to it.
    struct Still
    {
        int page;
        int firstFrame;
        int lastFrame;
    };
    const std::vector<Still>& stills() const { return m_stills; }

    TurnScript();

private:
    struct Turn
    {
        int firstFrame;
        int page;      ///< that is taken or laid down
        bool laying;   ///< else taking away
        Place outside; ///< where the page comes from or goes to
        std::vector<int> below;
    };
    static void playTaking(const Turn& turn, double t, Moment& moment);
    static void playLaying(const Turn& turn, double t, Moment& moment);

    std::vector<Turn> m_turns;
    std::vector<Still> m_stills;
    int m_frameCount = 0;
};

} // namespace deskpictures

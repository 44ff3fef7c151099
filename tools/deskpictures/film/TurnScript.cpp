#include "TurnScript.h"

#include <array>

namespace deskpictures {
namespace {

constexpr int turnFrames = 20;
constexpr int openingFrames = 12; // the loop's end lies still before it, too
constexpr int stillFrames = 22;

// Where the fingers hold a page, from its middle, and how the arm lies then: it comes from the lower right.
const cv::Point2d gripMm(78, 62);
constexpr double armDegrees = -38;
const Place handOutside{{330, 330}, -30};

Place gripOn(const Place& page)
{
    const cv::Matx33d m = motion(page);
    const cv::Vec3d at = m * cv::Vec3d(gripMm.x, gripMm.y, 1);
    return {{at[0], at[1]}, armDegrees + 0.6 * page.degrees};
}

} // namespace

TurnScript::TurnScript()
{
    const std::vector<Turn> plan = {{0, 0, false, {{395, 70}, 16}, {1}},
                                    {0, 2, true, {{390, -20}, -10}, {1}},
                                    {0, 0, true, {{385, 90}, 12}, {1, 2}}};
    const std::array<int, 4> shown = {0, 1, 2, 0};
    int frame = 0;
    for (size_t i = 0; i < shown.size(); ++i) {
        const int length = i == 0 ? openingFrames : stillFrames;
        m_stills.push_back({shown.at(i), frame, frame + length - 1});
        frame += length;
        if (i < plan.size()) {
            m_turns.push_back(plan[i]);
            m_turns.back().firstFrame = frame;
            frame += turnFrames;
        }
    }
    m_frameCount = frame;
}

// The third page lies exactly where the first will cover it, so that the end of the film looks like its
// beginning.
Place TurnScript::restOf(int page)
{
    return page == 1 ? Place{{3, -2}, 1.3} : Place{{0, 0}, -0.9};
}

TurnScript::Moment TurnScript::at(double frame) const
{
    Moment moment;
    moment.lying = {1, 0};
    for (const Turn& turn : m_turns) {
        const double t = (frame - turn.firstFrame) / turnFrames;
        if (t < 0)
            break;
        moment = {};
        moment.lying = turn.below;
        if (t < 1)
            turn.laying ? playLaying(turn, t, moment) : playTaking(turn, t, moment);
        else if (turn.laying)
            moment.lying.push_back(turn.page);
    }
    return moment;
}

void TurnScript::playTaking(const Turn& turn, double t, Moment& moment)
{
    const Place rest = restOf(turn.page);
    const Place page = between(rest, turn.outside, easeIn((t - 0.42) / 0.53));
    if (t < 0.42) {
        moment.lying.push_back(turn.page);
        moment.hand = between(handOutside, gripOn(rest), ease(t / 0.34));
        return;
    }
    moment.moving = turn.page;
    moment.movingPlace = page;
    moment.hand = gripOn(page);
}

void TurnScript::playLaying(const Turn& turn, double t, Moment& moment)
{
    const Place rest = restOf(turn.page);
    if (t > 0.62) {
        moment.lying.push_back(turn.page);
        moment.hand = between(gripOn(rest), handOutside, ease((t - 0.66) / 0.34));
        return;
    }
    moment.moving = turn.page;
    moment.movingPlace = between(turn.outside, rest, easeOut(t / 0.55));
    moment.hand = gripOn(moment.movingPlace);
}

} // namespace deskpictures

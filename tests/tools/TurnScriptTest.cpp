#include "TurnScript.h"

#include <gtest/gtest.h>

#include <cmath>

using deskpictures::Place;
using deskpictures::TurnScript;

namespace {

double apart(const Place& a, const Place& b)
{
    return std::hypot(a.atMm.x - b.atMm.x, a.atMm.y - b.atMm.y) + std::abs(a.degrees - b.degrees);
}

TEST(TurnScript, StillsLieStillAndAHandComesBetweenThem)
{
    const TurnScript script;
    const auto& stills = script.stills();
    for (size_t i = 0; i < stills.size(); ++i) {
        for (int frame = stills[i].firstFrame; frame <= stills[i].lastFrame; ++frame) {
            const TurnScript::Moment moment = script.at(frame);
            EXPECT_FALSE(moment.hand || moment.moving) << "frame " << frame;
            ASSERT_FALSE(moment.lying.empty());
            EXPECT_EQ(moment.lying.back(), stills[i].page) << "frame " << frame;
        }
        if (i == 0)
            continue;
        EXPECT_NE(stills[i - 1].page, stills[i].page);
        for (int frame = stills[i - 1].lastFrame + 1; frame < stills[i].firstFrame; ++frame)
            EXPECT_TRUE(script.at(frame).hand) << "frame " << frame;
    }
    EXPECT_EQ(stills.front().page, stills.back().page) << "the end looks like the beginning";
    EXPECT_EQ(stills.front().firstFrame, 0);
    EXPECT_EQ(stills.back().lastFrame, script.frameCount() - 1);
}

// A jump would look like a page change of its own.
TEST(TurnScript, PagesStartAndStopWhereTheyLie)
{
    const TurnScript script;
    const double step = 0.05;
    const double mostInAStep = 3; // mm and degrees; the quickest page makes 60 mm a frame
    for (double frame = 0; frame + step < script.frameCount(); frame += step) {
        const TurnScript::Moment now = script.at(frame);
        const TurnScript::Moment next = script.at(frame + step);
        if (now.moving && next.moving) {
            EXPECT_LT(apart(now.movingPlace, next.movingPlace), 1.5 * mostInAStep) << frame;
        } else if (next.moving && now.lying.back() == *next.moving) {
            EXPECT_LT(apart(next.movingPlace, TurnScript::restOf(*next.moving)), mostInAStep) << frame;
        } else if (now.moving && next.lying.back() == *now.moving) {
            EXPECT_LT(apart(now.movingPlace, TurnScript::restOf(*now.moving)), mostInAStep) << frame;
        }
    }
}

} // namespace

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

TEST(TurnScript, NothingMovesWhileAPageIsSaidToLieStill)
{
    const TurnScript script;
    for (const TurnScript::Still& still : script.stills())
        for (int frame = still.firstFrame; frame <= still.lastFrame; ++frame) {
            const TurnScript::Moment moment = script.at(frame);
            EXPECT_FALSE(moment.hand) << "frame " << frame;
            EXPECT_FALSE(moment.moving) << "frame " << frame;
            ASSERT_FALSE(moment.lying.empty());
            EXPECT_EQ(moment.lying.back(), still.page) << "frame " << frame;
        }
}

TEST(TurnScript, AHandComesBetweenTwoStillsAndEachShowsAnotherPage)
{
    const TurnScript script;
    for (size_t i = 1; i < script.stills().size(); ++i) {
        const TurnScript::Still& before = script.stills()[i - 1];
        const TurnScript::Still& after = script.stills()[i];
        EXPECT_NE(before.page, after.page);
        bool moved = false;
        for (int frame = before.lastFrame + 1; frame < after.firstFrame; ++frame) {
            EXPECT_TRUE(script.at(frame).hand) << "frame " << frame;
            moved = moved || script.at(frame).moving;
        }
        EXPECT_TRUE(moved);
    }
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

TEST(TurnScript, TheEndLooksLikeTheBeginning)
{
    const TurnScript script;
    EXPECT_EQ(script.stills().front().page, script.stills().back().page);
    EXPECT_EQ(script.stills().front().firstFrame, 0);
    EXPECT_EQ(script.stills().back().lastFrame, script.frameCount() - 1);
}

} // namespace

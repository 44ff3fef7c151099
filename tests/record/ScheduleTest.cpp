// What the film shows when, with cameras and encoders that exist as numbers only.
#include "Schedule.h"

#include <gtest/gtest.h>

#include <functional>

using mirvak::FrameBuffer;
using mirvak::Schedule;
using Task = Schedule::Task;
using Time = Schedule::Time;
using std::chrono::milliseconds;

namespace {

constexpr int rate = 30;

struct Shown
{
    int64_t slot;
    int frame;  ///< number of the camera's frame
    Time begun; ///< when the encoder set about it
};

/// A camera that delivers its frames at the given times, an encoder that takes so long for each.
class Simulation
{
public:
    Time encoding{0};
    std::function<Time(Time)> stall = [](Time) { return Time(0); };

    const std::vector<Shown>& run(const std::vector<Time>& arrivals, Time end)
    {
        for (Time now(0);;) {
            deliver(arrivals, std::min(now, end));
            if (now >= end && !closed_) {
                schedule_.close(end);
                closed_ = true;
            }
            Schedule::Step step = schedule_.next(now);
            if (step.task == Task::end)
                return shown_;
            now = step.task == Task::wait ? std::min(step.until, std::max(end, now + Time(1)))
                                          : show(step, now);
        }
    }
    const mirvak::RecordCounts& counts() const { return schedule_.counts(); }

private:
    void deliver(const std::vector<Time>& arrivals, Time now)
    {
        for (; next_ < arrivals.size() && arrivals[next_] <= now; ++next_) {
            FrameBuffer buffer = schedule_.emptyBuffer();
            *reinterpret_cast<int*>(buffer.get()) = static_cast<int>(next_);
            schedule_.push(std::move(buffer), arrivals[next_]);
        }
    }
    Time show(Schedule::Step& step, Time now)
    {
        if (step.buffer)
            frame_ = *reinterpret_cast<int*>(step.buffer.get());
        shown_.push_back({step.slot, frame_, now});
        const Time cost = step.buffer ? encoding : encoding / 4;
        if (step.buffer)
            schedule_.giveBack(std::move(step.buffer));
        return now + cost + stall(now);
    }

    Schedule schedule_{rate, sizeof(int)};
    std::vector<Shown> shown_;
    size_t next_ = 0;
    int frame_ = -1;
    bool closed_ = false;
};

std::vector<Time> camera(double framesPerSecond, double begin, double end)
{
    std::vector<Time> times;
    for (int i = 0; begin + i / framesPerSecond < end; ++i)
        times.emplace_back(static_cast<int64_t>((begin + i / framesPerSecond) * 1e9));
    return times;
}

class AnyCamera : public ::testing::TestWithParam<double>
{
};

TEST_P(AnyCamera, TenSecondsAreTenSecondsOfFilm)
{
    Simulation simulation;
    simulation.encoding = milliseconds(16);
    const std::vector<Time> arrivals = camera(GetParam(), 0.012, 10);
    const auto& film = simulation.run(arrivals, milliseconds(10000));
    ASSERT_EQ(film.size(), 300u);
    for (size_t slot = 0; slot < film.size(); ++slot) {
        ASSERT_EQ(film[slot].slot, static_cast<int64_t>(slot));
        const double arrival =
            static_cast<double>(arrivals[static_cast<size_t>(film[slot].frame)].count()) / 1e9;
        const double age = (static_cast<double>(slot) + 1) / rate - arrival;
        ASSERT_GE(age, -1e-6) << "a frame is shown before it was taken";
        ASSERT_LE(age, 2.0 / rate + 1 / GetParam()) << "slot " << slot;
    }
    EXPECT_EQ(simulation.counts().dropped, 0);
    EXPECT_NEAR(simulation.counts().repeated, std::max(0.0, 300 - 10 * GetParam()), 2);
}
INSTANTIATE_TEST_SUITE_P(Rates, AnyCamera, ::testing::Values(7.5, 15, 24, 29.97, 30, 60, 90));

TEST(Schedule, FramesAtTheSlotsBordersAreNeitherLostNorRepeated)
{
    Simulation simulation;
    std::vector<Time> arrivals = camera(rate, 1.0 / rate, 5);
    for (size_t i = 0; i < arrivals.size(); ++i)
        arrivals[i] += milliseconds(i * 7 % 5) - milliseconds(2);
    const auto& film = simulation.run(arrivals, milliseconds(5000));
    EXPECT_LE(simulation.counts().repeated, 3);
    for (size_t i = 1; i < film.size(); ++i)
        ASSERT_LE(film[i].frame - film[i - 1].frame, 1) << "slot " << i;
}

TEST(Schedule, TheFirstFrameStandsForTheTimeBeforeIt)
{
    Simulation simulation;
    const auto& film = simulation.run(camera(rate, 0.41, 2), milliseconds(2000));
    ASSERT_EQ(film.size(), 60u);
    for (int slot = 0; slot <= 12; ++slot)
        EXPECT_EQ(film[slot].frame, 0) << slot;
    EXPECT_EQ(film[30].frame, 30 - 12);
}

TEST(Schedule, ACameraPulledOutLeavesNoBurst)
{
    Simulation simulation;
    simulation.encoding = milliseconds(16);
    const auto& film = simulation.run(camera(rate, 0.01, 1), milliseconds(20000));
    ASSERT_EQ(film.size(), 600u);
    for (const Shown& shown : film) {
        const Time over((shown.slot + 1) * 1'000'000'000 / rate);
        ASSERT_LE(shown.begun - over, milliseconds(100)) << "slot " << shown.slot << " was put off";
    }
    EXPECT_EQ(film.back().frame, 29);
}

TEST(Schedule, ALateEncoderThinsTheFilmOutAndKeepsRealTime)
{
    Simulation simulation;
    simulation.encoding = milliseconds(80); // 12 frames a second
    const auto& film = simulation.run(camera(rate, 0.01, 10), milliseconds(10000));
    EXPECT_EQ(film.back().slot, 299);
    EXPECT_GT(simulation.counts().dropped, 100);
    EXPECT_LE(film.back().begun, milliseconds(10000 + 8 * 80 + 100)) << "more than the queue was left";
    for (size_t i = 1; i < film.size(); ++i) {
        ASSERT_LE(film[i].frame - film[i - 1].frame, 6) << "one long gap at slot " << film[i].slot;
        ASSERT_LE(std::abs(film[i].slot - film[i].frame), 2) << "out of real time";
    }
}

TEST(Schedule, AStalledDiskCostsFramesNotTime)
{
    Simulation simulation;
    simulation.encoding = milliseconds(16);
    bool hasStalled = false;
    simulation.stall = [&](Time now) {
        const bool begins = !hasStalled && now > milliseconds(3000);
        hasStalled = hasStalled || begins;
        return begins ? Time(milliseconds(3000)) : Time(0);
    };
    const auto& film = simulation.run(camera(rate, 0.01, 10), milliseconds(10000));
    EXPECT_EQ(film.back().slot, 299);
    EXPECT_NEAR(simulation.counts().dropped, 90 - 8, 3);
    for (size_t i = 1; i < film.size(); ++i)
        ASSERT_LE(film[i].frame - film[i - 1].frame, 24) << "the stall's frames went in one piece";
}

TEST(Schedule, StopFillsUpToItsMoment)
{
    Simulation one;
    EXPECT_EQ(one.run({milliseconds(5)}, milliseconds(10)).size(), 1u) << "stopped within the first slot";
    Simulation three;
    EXPECT_EQ(three.run({milliseconds(5)}, milliseconds(3000)).size(), 90u);
    Simulation none;
    EXPECT_TRUE(none.run({}, milliseconds(3000)).empty());
    EXPECT_EQ(none.counts().written, 0);
}

TEST(FrameQueue, TheFrameGoesWhoseLossLeavesTheSmallestGap)
{
    mirvak::FrameQueue queue(1, 2);
    const auto push = [&](int64_t slot) { return queue.push(queue.emptyBuffer(), slot); };
    push(10);
    queue.giveBack(queue.popFirst());
    EXPECT_FALSE(push(11) || push(14)) << "there is room";
    EXPECT_TRUE(push(20));
    EXPECT_EQ(queue.firstSlot(), 14) << "the film goes on from 10, and 4 without a frame are less than 9";
    EXPECT_TRUE(push(21));
    EXPECT_EQ(queue.firstSlot(), 14) << "the newest stays, and 20 leaves the smaller gap";
    EXPECT_FALSE(push(21)) << "of two in one slot none is lost";
    EXPECT_EQ(queue.size(), 2U);
}

} // namespace

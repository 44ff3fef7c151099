#include "ImageChannel.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

namespace {

class ImageChannelTest : public ::testing::Test
{
protected:
    /// A frame whose width tells one from another.
    FrameHandle frame(int width) { return ownImage(camera_, makeImageHandle(width, 8)); }
    int widthOf(const FrameHandle& image) { return camera_.MirvakImage_GetWidth(image.get()); }
    /// A capture that has asked and waits.
    std::future<FrameHandle> waiting()
    {
        auto taken = std::async(std::launch::async, [this] { return channel_.take(60s); });
        while (!channel_.isRequested())
            std::this_thread::yield();
        return taken;
    }

    MirvakCamera camera_;
    ImageChannel channel_{camera_};
};

TEST_F(ImageChannelTest, TheFirstFrameAfterTheRequestIsHandedOverAndNoOther)
{
    auto taken = waiting();
    for (const int width : {11, 12, 13})
        channel_.offer(frame(width).get());
    EXPECT_EQ(widthOf(taken.get()), 11);
    EXPECT_FALSE(channel_.isRequested());

    channel_.offer(frame(10).get());
    EXPECT_EQ(channel_.take(20ms), nullptr);
}

TEST_F(ImageChannelTest, AWaitThatIsWatchedTakesAFrameThatComesWhileItIsLookedAfterAndCanBeGivenUp)
{
    EXPECT_EQ(widthOf(channel_.take(20s,
                                    [&] {
                                        channel_.offer(frame(11).get());
                                        return true;
                                    })),
              11);
    auto other = waiting();
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(channel_.take(20s, [] { return false; }), nullptr);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "") << "nothing has timed out";
    channel_.offer(frame(12).get());
    EXPECT_EQ(widthOf(other.get()), 12) << "who did not give up gets his frame";
    const FrameHandle last = frame(13);
    EXPECT_EQ(channel_.take(20s,
                            [&] {
                                channel_.offer(last.get());
                                return false;
                            }),
              nullptr)
        << "what was given up is not saved after all";
    EXPECT_EQ(static_cast<mirvak::Image*>(last.get())->pixels.u->refcount, 1) << "nor kept";
}

TEST_F(ImageChannelTest, ATimeOutKeepsOneFrameAtMostAndNeverAnswersTheNextRequest)
{
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(channel_.take(1ms), nullptr);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Get image timeout!\n");
    EXPECT_TRUE(channel_.isRequested());
    const FrameHandle old = frame(50); // an old page: nobody must get it later
    for (int i = 0; i < 50; ++i)
        channel_.offer(old.get());
    const cv::Mat& pixels = static_cast<mirvak::Image*>(old.get())->pixels;
    EXPECT_EQ(pixels.u->refcount, 2) << "the test's own and one in the channel";
    auto taken = std::async(std::launch::async, [&] { return channel_.take(20s); });
    std::atomic<bool> done{false};
    std::thread source([&] {
        while (!done)
            channel_.offer(frame(100).get());
    });
    const FrameHandle image = taken.get();
    done = true;
    source.join();
    EXPECT_EQ(widthOf(image), 100);
}

TEST_F(ImageChannelTest, EveryOneOfManyConsumersGetsAFrameOfItsOwn)
{
    auto other = waiting();
    std::vector<int> widths{11, 12};
    const FrameHandle mine = channel_.take(20s, [&] { // two frames at once, and no more
        for (const int width : std::exchange(widths, {}))
            channel_.offer(frame(width).get());
        return true;
    });
    ASSERT_EQ(other.wait_for(20s), std::future_status::ready);
    EXPECT_EQ(widthOf(mine) + widthOf(other.get()), 11 + 12);

    int later = 0;
    const FrameHandle first = channel_.take(20s, [&] {
        channel_.offer(frame(11).get()); // the answer; whoever comes now waits for the next one
        auto taken = std::async(std::launch::async, [&] { return channel_.take(60s); });
        while (taken.wait_for(1ms) != std::future_status::ready)
            channel_.offer(frame(12).get());
        later = widthOf(taken.get());
        return true;
    });
    EXPECT_EQ(widthOf(first), 11);
    EXPECT_EQ(later, 12);

    std::atomic<bool> done{false};
    std::thread source([&] {
        for (int width = 1; !done; width = width % 60 + 1)
            channel_.offer(frame(width).get());
    });
    std::vector<std::future<int>> results;
    for (int i = 0; i < 6; ++i) {
        results.push_back(std::async(std::launch::async, [&] {
            int received = 0;
            for (int n = 0; n < 40; ++n)
                received += channel_.take(20s) ? 1 : 0;
            return received;
        }));
    }
    for (auto& result : results)
        EXPECT_EQ(result.get(), 40);
    done = true;
    source.join();
}

TEST_F(ImageChannelTest, AStreamThatEndsSendsTheWaitingAndTheComingAwayUntilItRunsAgain)
{
    auto taken = waiting();
    channel_.interrupt();
    EXPECT_EQ(taken.get(), nullptr);
    EXPECT_EQ(channel_.take(60s), nullptr) << "a capture that comes just too late";
    channel_.resume();
    auto next = std::async(std::launch::async, [&] { return channel_.take(60s); });
    while (next.wait_for(1ms) != std::future_status::ready)
        channel_.offer(frame(7).get());
    EXPECT_EQ(widthOf(next.get()), 7);

    channel_.interrupt();
    channel_.offer(frame(8).get()); // it runs again, whoever may have told so
    next = std::async(std::launch::async, [&] { return channel_.take(60s); });
    while (next.wait_for(1ms) != std::future_status::ready)
        channel_.offer(frame(8).get());
    EXPECT_EQ(widthOf(next.get()), 8);

    EXPECT_EQ(channel_.take(1ms), nullptr);
    const FrameHandle late = frame(9);
    channel_.offer(late.get());
    channel_.close();
    EXPECT_EQ(static_cast<mirvak::Image*>(late.get())->pixels.u->refcount, 1) << "nothing is kept";
    EXPECT_EQ(channel_.take(60s), nullptr);
}

TEST_F(ImageChannelTest, TheEndSendsWhoWaitsAway)
{
    auto last = waiting();
    channel_.close();
    EXPECT_EQ(last.get(), nullptr);
    EXPECT_EQ(channel_.take(60s), nullptr);
}

} // namespace

#include "Job.h"
#include "Workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>

TEST(Job, NeverGoesBackWhoeverTellsIt)
{
    constexpr int count = 20000;
    Job job;
    const auto tell = [&](int from) {
        for (int i = from; i <= count; ++i)
            job.reach(i, count, 0.25);
    };
    std::thread one(tell, 0), other(tell, 1);
    int falls = 0, done = 0;
    for (double seen = 0; seen < 1;) {
        const double now = job.progress();
        const int doneNow = job.done();
        falls += now < seen || doneNow < done ? 1 : 0;
        seen = now;
        done = doneNow;
    }
    one.join();
    other.join();
    EXPECT_EQ(falls, 0);
    job.reach(7, 0); // nothing to count
    job.reach(2.5);
    EXPECT_EQ(job.progress(), 1);
    EXPECT_EQ(job.done(), count);
    Job half;
    half.reach(1, 2, 0.5);
    EXPECT_EQ(half.progress(), 0.75);
    half.reach(0, 2, 0.5);
    EXPECT_EQ(half.progress(), 0.75);
    EXPECT_EQ(half.done(), 1);
}

TEST(Workers, TheEndWaitsUntilWhatAJobHoldsIsReleased)
{
    for (const bool fails : {false, true}) {
        std::atomic<bool> isReleased{false};
        const auto release = [&](int* held) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            delete held;
            isReleased = true;
        };
        Workers workers;
        ASSERT_TRUE(workers.start([held = std::shared_ptr<int>(new int(0), release), fails] {
            if (fails)
                throw std::runtime_error("a job that fails");
        }));
        workers.finish();
        EXPECT_TRUE(isReleased);
    }
}

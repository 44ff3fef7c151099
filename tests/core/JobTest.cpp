#include "Job.h"

#include <gtest/gtest.h>

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
}

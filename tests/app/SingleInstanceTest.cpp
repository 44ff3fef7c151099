#include "SingleInstance.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A key of this test run alone.
QString key(const char* name)
{
    return QStringLiteral("lumro-test-%1-%2").arg(QLatin1String(name)).arg(getpid());
}

TEST(SingleInstanceTest, TheSecondIsRefusedUntilTheFirstIsGone)
{
    SingleInstance second(key("two"));
    {
        SingleInstance first(key("two"));
        ASSERT_TRUE(first.acquire());
        EXPECT_FALSE(second.acquire());
    }
    EXPECT_TRUE(SingleInstance(key("two")).acquire());
}

TEST(SingleInstanceTest, WhatACrashLeftBehindIsTakenOver)
{
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        auto* crashing = new SingleInstance(key("crash")); // never destroyed: the segment stays
        _exit(crashing->acquire() ? 0 : 1);
    }
    int status = 1;
    waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
    EXPECT_TRUE(SingleInstance(key("crash")).acquire());
}

} // namespace

#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

/// The end of a single shot at once, by the event loop. Later shots take their own time again: one that kept
/// the short interval might end between two looks of a test.
inline void endNow(QTimer& timer)
{
    const int interval = timer.interval();
    timer.start(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !timer.isActive(); }));
    timer.setInterval(interval);
}

#include "FrameMailbox.h"

#include "MouseAndFrames.h"

#include <gtest/gtest.h>

TEST(FrameMailbox, WakesItsReaderOnceAndKeepsTheNewestOnly)
{
    FrameMailbox mailbox;
    std::atomic<int> lent{0};
    EXPECT_TRUE(mailbox.take().isNull());
    EXPECT_TRUE(mailbox.put(loan(lent, 1)));
    EXPECT_FALSE(mailbox.put(loan(lent, 2)));
    EXPECT_FALSE(mailbox.put(loan(lent, 3)));
    EXPECT_EQ(lent, 1);
    {
        const QImage newest = mailbox.take();
        EXPECT_EQ(qRed(newest.pixel(0, 0)), 3);
        EXPECT_TRUE(mailbox.take().isNull());
        EXPECT_TRUE(mailbox.put(loan(lent, 4)));
        EXPECT_EQ(qRed(newest.pixel(0, 0)), 3);
    }
    EXPECT_EQ(lent, 1);
    mailbox.take();
    EXPECT_EQ(lent, 0);
}

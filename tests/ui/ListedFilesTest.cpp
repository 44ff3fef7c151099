#include "ThumbnailStrip.h"

#include <QFile>

TEST_F(ThumbnailStrip, FollowsItsFilesAndGoesWhilePicturesAreBeingMade)
{
    add("a.png b.png");
    for (const QColor colour : {Qt::blue, Qt::green}) { // twice: the watch must survive a replacement
        save("a.png", colour);
        EXPECT_TRUE(turns(0, colour));
    }
    EXPECT_EQ(strip.Count(), 2);
    QFile::remove(file("a.png"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 1; }));
    EXPECT_EQ(names(strip), words("b.png"));
    strip.onFileChanged(file("a.png")); // a late notice about an entry that has gone
    EXPECT_EQ(strip.Count(), 1);

    const QString large = save("large.png", Qt::red, QSize(3000, 2000));
    for (int i = 0; i < 5; ++i) {
        Thumbnail other;
        other.AddImage(large, -1);
        for (const char* name : {"a.png", "b.png"})
            other.AddImage(save(name), -1);
        if (i % 2)
            other.clearthumbnail(false);
    }
    QCoreApplication::processEvents();
}

TEST_F(ThumbnailStrip, AFileThatIsWrittenInPlaceStaysAndComesRightAgain)
{
    strip.AddImage(save("a.png", Qt::red, QSize(400, 300)), -1);
    add("b.png");
    ASSERT_TRUE(turns(0, Qt::red));
    QFile whole(save("whole.png", Qt::blue, QSize(400, 300)));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    QFile written(file("a.png"));
    int step = 0;
    for (const int half : {0, 60, bytes.size() / 2}) {
        ASSERT_TRUE(written.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered));
        written.write(bytes.left(half));
        const QColor mark(40 + 40 * step++, 0, 200);
        save("b.png", mark); // pictures are made in turn: when it is seen, the half one has been tried
        ASSERT_TRUE(turns(strip.GetIndex(file("b.png")), mark));
        ASSERT_EQ(names(strip), words("a.png b.png")) << half;
        written.write(bytes.mid(half));
        written.close();
        EXPECT_TRUE(turns(0, Qt::blue)) << half;
    }
}

TEST_F(ThumbnailStrip, AnUnreadablePictureIsTriedUntilItCanBeRead)
{
    for (const char* folder : {"one", "two"})
        QDir().mkdir(file(folder));
    ASSERT_TRUE(QFile::link(file("one"), file("now")));
    save("one/a.png", Qt::red, QSize(400, 300));
    save("two/a.png", Qt::green);
    strip.AddImage(file("now/a.png"), -1);
    ASSERT_TRUE(turns(0, Qt::red));
    ASSERT_TRUE(QFile::resize(file("now/a.png"), 60));
    add("b.png");
    ASSERT_TRUE(turns(1, Qt::red)) << "the broken one has been tried";
    QFile::remove(file("now"));
    ASSERT_TRUE(QFile::link(file("two"), file("now"))); // no notice comes of that
    EXPECT_TRUE(turns(0, Qt::green));
}

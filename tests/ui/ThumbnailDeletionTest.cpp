#include "ThumbnailStrip.h"

#include "LeftOverFiles.h"
#include "Settings.h"
#include "TimerEnd.h"

#include <QFile>
#include <QPixmap>
#include <QRegularExpression>
#include <QTimer>

TEST_F(ThumbnailStrip, TheMenuActsOnTheEntriesItWasOpenedFor)
{
    settings::setSavePath(settings, QStringLiteral("/elsewhere"));
    add("a.png b.png c.png");
    int captures = 0;
    const auto capture = [&] { // selects itself
        strip.AddImage(save(QStringLiteral("new%1.png").arg(captures++).toLatin1().constData()), 0);
    };
    const auto chooseFor = [&](int row, const char* caption) {
        list->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
        choose(caption, capture);
    };
    chooseFor(1, "Move up");
    EXPECT_EQ(names(strip), words("new0.png b.png a.png c.png"));
    chooseFor(1, "Move down");
    EXPECT_EQ(names(strip), words("new1.png new0.png a.png b.png c.png"));
    chooseFor(3, "Open");
    EXPECT_EQ(answers.opened, QStringList{file("b.png")});
    list->item(5)->setSelected(true); // c.png beside b.png, which is the current one
    list->item(4)->setSelected(true);
    list->item(0)->setSelected(false);
    choose("Delete", capture);
    EXPECT_EQ(names(strip), words("new3.png new2.png new1.png new0.png a.png"));
    EXPECT_FALSE(onDisk("b.png") || onDisk("c.png"));
    EXPECT_TRUE(onDisk("new2.png") && onDisk("new3.png"));
    choose("Clear", capture);
    EXPECT_EQ(names(strip), words("new4.png"));
    EXPECT_TRUE(onDisk("new4.png"));
    EXPECT_FALSE(onDisk("new3.png") || onDisk("a.png"));
}

TEST_F(ThumbnailStrip, ClearsWithOrWithoutTheFiles)
{
    add("a.png b.png");
    strip.RemoveItem(5, true);
    strip.RemoveItem(0, false);
    strip.onClear(false);
    EXPECT_EQ(strip.Count(), 0);
    EXPECT_TRUE(onDisk("a.png") && onDisk("b.png"));
    EXPECT_EQ(offer(), QString());
    add("a.png b.png c.png");
    strip.RemoveItem(1, true);
    EXPECT_EQ(names(strip), words("a.png c.png"));
    EXPECT_FALSE(onDisk("b.png"));
    choose("Clear");
    EXPECT_EQ(strip.Count(), 0);
    EXPECT_FALSE(onDisk("a.png") || onDisk("c.png"));
}

TEST_F(ThumbnailStrip, ADeletionCanBeTakenBack)
{
    add("a.png b.png");
    strip.AddImage(save("c.png", Qt::blue), -1);
    add("d.png");
    ASSERT_TRUE(turns(2, Qt::blue));
    list->item(0)->setSelected(true);
    list->item(2)->setSelected(true);
    choose("Delete");
    EXPECT_EQ(offer(), QStringLiteral("3 file(s) deleted"));
    EXPECT_EQ(names(strip), words("b.png"));
    EXPECT_FALSE(onDisk("a.png") || onDisk("c.png") || onDisk("d.png"));
    ASSERT_EQ(hidden().size(), 3);
    const QString copy = hidden()[0].replace(QRegularExpression(QStringLiteral("\\d+")), QStringLiteral("9"));
    ASSERT_TRUE(QFile::copy(file(hidden()[0].toLatin1().constData()), file(copy.toLatin1().constData())));
    leftOverFiles::remove(QString::fromStdString(dir.path()));
    EXPECT_EQ(hidden().size(), 3)
        << "as of a killed program the copy has gone, what can be brought back has not";
    EXPECT_FALSE(hidden().contains(copy));
    add("new.png");
    const QString taken = save("c.png", Qt::green); // its number was free
    undo();
    EXPECT_EQ(names(strip).join(u'|'), QStringLiteral("a.png|b.png|c (2).png|d.png|new.png"));
    EXPECT_EQ(QImage(file("c (2).png")).pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(QImage(taken).pixelColor(0, 0), QColor(Qt::green)) << "never replaced";
    EXPECT_TRUE(said().startsWith(QStringLiteral("Brought back as c (2).png:"))) << qPrintable(said());
    EXPECT_TRUE(hidden().isEmpty() && offer().isEmpty());
    EXPECT_FALSE(strip.findChild<QWidget*>(QStringLiteral("undoBar"))->findChild<QTimer*>()->isActive());
    EXPECT_EQ(list->selectedItems().size(), 3);
    save("a.png", Qt::yellow);
    EXPECT_TRUE(turns(0, Qt::yellow)) << "it is followed again";

    choose("Clear");
    QTest::keyClick(&strip, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(strip.Count(), 5);
    QTest::keyClick(&strip, Qt::Key_Z, Qt::ControlModifier); // nothing more
    EXPECT_EQ(strip.Count(), 5);
    EXPECT_TRUE(onDisk("new.png") && hidden().isEmpty());
}

TEST_F(ThumbnailStrip, WhatIsNotTakenBackIsGoneForGood)
{
    add("a.png b.png c.png");
    strip.RemoveItem(0, true);
    auto* timer = strip.findChild<QWidget*>(QStringLiteral("undoBar"))->findChild<QTimer*>();
    EXPECT_EQ(timer->interval(), 10000);
    const QStringList first = hidden();
    strip.RemoveItem(0, true);
    EXPECT_EQ(hidden().size(), 1) << "one deletion at a time";
    EXPECT_NE(hidden(), first);
    endNow(*timer);
    EXPECT_TRUE(QTest::qWaitFor([&] { return hidden().isEmpty(); }));
    EXPECT_EQ(offer(), QString());
    QTest::keyClick(&strip, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(names(strip), words("c.png"));
    {
        Thumbnail other;
        other.AddImage(file("c.png"), -1);
        other.onClear();
        EXPECT_EQ(hidden().size(), 1);
    }
    EXPECT_TRUE(hidden().isEmpty()) << "at the end too";
    EXPECT_FALSE(onDisk("c.png"));
}

TEST_F(ThumbnailStrip, WhatCannotBeDeletedOrBroughtBackStaysAndIsSaid)
{
    const QString kernel = QStringLiteral("/proc/version"); // cannot be deleted by anybody
    QPixmap stock(20, 20);
    strip.AddImage(stock, kernel, -1);
    QDir().mkdir(file("folder"));
    strip.AddImage(stock, file("folder"), -1);
    add("a.png");
    strip.onClear();
    EXPECT_EQ(names(strip), words("version folder"));
    EXPECT_FALSE(onDisk("a.png"));
    EXPECT_TRUE(onDisk("folder"));
    EXPECT_EQ(offer(), QStringLiteral("1 file(s) deleted"));
    EXPECT_TRUE(said().endsWith(QStringLiteral("version, folder"))) << qPrintable(said());
    list->setCurrentRow(0);
    strip.onDelete();
    EXPECT_EQ(strip.Count(), 2);
    EXPECT_FALSE(offer().isEmpty()) << "the deletion before can still be taken back";
    undo();
    EXPECT_TRUE(onDisk("a.png"));

    strip.clearthumbnail(false);
    QDir().mkdir(file("there"));
    strip.AddImage(save("there/a.png"), -1);
    add("b.png");
    strip.onClear();
    ASSERT_TRUE(QDir().rename(file("there"), file("away")));
    undo();
    EXPECT_EQ(names(strip), words("b.png"));
    EXPECT_TRUE(said().endsWith(QStringLiteral("a.png"))) << qPrintable(said());
    ASSERT_TRUE(QDir().rename(file("away"), file("there")));
    undo();
    EXPECT_EQ(names(strip), words("a.png b.png"));
    EXPECT_TRUE(onDisk("there/a.png"));
}

TEST_F(ThumbnailStrip, APageListKeepsTheFiles)
{
    strip.becomePageList();
    add("a.png b.png c.png d.png e.png");
    QFile::remove(file("e.png"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 4; }));
    EXPECT_TRUE(said().startsWith(QStringLiteral("e.png"))) << "a page is not lost without a word";
    EXPECT_FALSE(list->item(0)->flags() & Qt::ItemIsDropEnabled) << "a drop would replace that page";
    list->setCurrentRow(3);
    choose("Delete");
    QTest::keyClick(&strip, Qt::Key_Home);
    QTest::keyClick(&strip, Qt::Key_Delete);
    EXPECT_EQ(names(strip), words("b.png c.png"));
    EXPECT_TRUE(list->item(0)->isSelected()) << "the key can be pressed again";
    QFile::remove(file("c.png"));
    QFile::remove(file("a.png")); // which is no page any more
    ASSERT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 1; }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(said().startsWith(QStringLiteral("c.png"))) << qPrintable(said());
    save("a.png");
    add("c.png");
    list->setCurrentRow(1);
    choose("Move up");
    EXPECT_EQ(names(strip), words("c.png b.png"));
    choose("Clear");
    EXPECT_EQ(strip.Count(), 0);
    EXPECT_TRUE(onDisk("a.png") && onDisk("b.png") && onDisk("c.png") && onDisk("d.png"));
}

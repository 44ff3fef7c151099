#include "CardComposition.h"

#include "FakeDesk.h"
#include "Settings.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace {

class CardCompositionTest : public ::testing::Test
{
protected:
    CardCompositionTest()
    {
        desk.savesAs = QStringList{file("front.png", Qt::red), file("back.png", Qt::blue)};
    }

    QString file(const char* name, Qt::GlobalColor colour) const
    {
        const QString path = QString::fromStdString(folder.file(name));
        QImage picture(6, 4, QImage::Format_RGB32);
        picture.fill(colour);
        EXPECT_TRUE(picture.save(path));
        return path;
    }
    static QColor colourOf(const QPixmap& picture) { return picture.toImage().pixelColor(1, 1); }
    void expectIdle() const
    {
        EXPECT_FALSE(composition.isPending());
        EXPECT_FALSE(desk.mergePending);
        EXPECT_TRUE(desk.toolsEnabled);
    }
    void expectPending() const
    {
        EXPECT_TRUE(composition.isPending());
        EXPECT_TRUE(desk.mergePending);
        EXPECT_FALSE(desk.toolsEnabled);
    }

    const TempDir folder;
    FakeDesk desk;
    int shown = 0;
    QPixmap first, second;
    QString savePath;
    CardComposition composition{desk, [this](const QPixmap& a, const QPixmap& b, const QString& path) {
                                    ++shown;
                                    first = a;
                                    second = b;
                                    savePath = path;
                                }};
};

TEST_F(CardCompositionTest, TwoClicksMakeAPair)
{
    ConfigSettings store;
    settings::deskew.write(store, 1);
    settings::scanType.write(store, 3);
    composition.takeShot();
    expectPending();
    EXPECT_EQ(shown, 0);
    EXPECT_FALSE(desk.mayCapture()) << "no other capture meanwhile";
    ASSERT_EQ(desk.notices.size(), 1) << "the user learns that a second click is due";
    EXPECT_FALSE(desk.notices[0].isEmpty());
    composition.takeShot();
    store.GetSettings()->clear();
    expectIdle();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(colourOf(first), QColor(Qt::red));
    EXPECT_EQ(colourOf(second), QColor(Qt::blue));
    EXPECT_EQ(savePath, desk.freeImagePath());
    EXPECT_EQ(desk.thumbnails.size(), 2) << "both sides are captures of their own";
    EXPECT_EQ(desk.cropModes, (QList<int>{1, 1}));
    EXPECT_EQ(desk.colourModes, (QList<int>{3, 3}));
}

TEST_F(CardCompositionTest, AFailureLeavesTheStateWhereItWas)
{
    const QStringList files = desk.savesAs;
    const auto fail = [&] {
        desk.allowed = false;
        composition.takeShot();
        desk.allowed = true;
        EXPECT_EQ(desk.framesTaken, 0);
        desk.frameComes = false;
        composition.takeShot();
        desk.frameComes = true;
        EXPECT_EQ(desk.notices.size(), 1) << "no picture came";
        desk.savesAs.clear();
        composition.takeShot();
        desk.notices.clear();
        desk.framesTaken = 0;
    };
    fail();
    expectIdle();
    desk.savesAs << QStringLiteral("/nowhere/gone.jpg");
    composition.takeShot();
    expectIdle();
    EXPECT_EQ(desk.notices.size(), 1) << "a first side that cannot be read is no first side";
    desk.savesAs = files;
    composition.takeShot();
    desk.notices.clear();
    desk.framesTaken = 0;
    fail();
    expectPending();
    EXPECT_EQ(shown, 0);
}

TEST_F(CardCompositionTest, AnUnreadableSecondSideEndsThePairEmpty)
{
    desk.savesAs[1] = QString::fromStdString(folder.write("broken.jpg", "no picture"));
    composition.takeShot();
    composition.takeShot();
    expectIdle();
    EXPECT_EQ(shown, 1);
    EXPECT_FALSE(first.isNull());
    EXPECT_TRUE(second.isNull());
}

TEST_F(CardCompositionTest, AStormOfClicksTakesOnePicture)
{
    desk.whileTaking = [&] {
        composition.takeShot(); // from an event loop inside
        QMetaObject::invokeMethod(
            &composition, [&] { composition.takeShot(); }, Qt::QueuedConnection);
    };
    composition.takeShot();
    QCoreApplication::processEvents();
    EXPECT_EQ(desk.framesTaken, 1);
    expectPending();
    desk.whileTaking = nullptr;
    composition.takeShot();
    EXPECT_EQ(shown, 1);
}

} // namespace

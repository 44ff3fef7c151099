#include "CardComposition.h"

#include "OutputFixture.h"

#include <QCoreApplication>

namespace {

class CardCompositionTest : public OutputTest
{
protected:
    CardCompositionTest() { desk.savesAs << save("front.png", Qt::red) << save("back.png", Qt::blue); }
    static QColor colourOf(const QPixmap& picture) { return picture.toImage().pixelColor(1, 1); }
    void expectPending(bool isPending = true) const
    {
        EXPECT_EQ(composition.isPending(), isPending);
        EXPECT_EQ(desk.mergePending, isPending);
        EXPECT_EQ(desk.toolsEnabled, !isPending);
    }
    void expectIdle() const { expectPending(false); }

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
    settings::deskew.write(settings, 1);
    settings::scanType.write(settings, 3);
    composition.takeShot();
    expectPending();
    EXPECT_EQ(shown, 0);
    EXPECT_FALSE(desk.mayCapture()) << "no other capture meanwhile";
    ASSERT_EQ(desk.notices.size(), 1) << "the user learns that a second click is due";
    EXPECT_FALSE(desk.notices[0].isEmpty());
    composition.takeShot();
    expectIdle();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(colourOf(first), QColor(Qt::red));
    EXPECT_EQ(colourOf(second), QColor(Qt::blue));
    EXPECT_EQ(savePath, desk.freeImagePath());
    EXPECT_EQ(desk.notices.last(), QString()) << "no further click is due";
    EXPECT_EQ(desk.thumbnails.size(), 2) << "both sides are captures of their own";
    EXPECT_EQ(desk.cropModes, (QList<int>{1, 1}));
    EXPECT_EQ(desk.colourModes, (QList<int>{3, 3}));
}

TEST_F(CardCompositionTest, AFirstSideThatCannotBeReadBackIsNone)
{
    folder.write("torn.png", "no picture");
    desk.savesAs = QStringList{path("torn.png")};
    composition.takeShot();
    expectIdle();
    ASSERT_EQ(desk.notices.size(), 1);
    EXPECT_TRUE(desk.notices[0].contains(QStringLiteral("cannot be read back")));
}

TEST_F(CardCompositionTest, GivenUpItForgetsTheFirstSideAndSaysSoOnce)
{
    QList<bool> sides; // whether there is one
    QObject::connect(&composition, &CardComposition::firstSideChanged, [&](const QPixmap& side) {
        sides << !side.isNull();
    });
    composition.giveUp();
    EXPECT_TRUE(desk.notices.isEmpty() && sides.isEmpty()) << "there is nothing to give up";
    composition.takeShot();
    desk.notices.clear();
    for (int i = 0; i < 2; ++i)
        composition.giveUp();
    expectIdle();
    EXPECT_EQ(sides, (QList<bool>{true, false}));
    EXPECT_EQ(desk.notices.size(), 1);
    composition.takeShot(); // what comes next is a first side again
    expectPending();
    EXPECT_EQ(shown, 0);
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

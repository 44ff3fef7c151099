#include "ShotHint.h"

#include "MouseAndFrames.h"
#include "VideoView.h"

#include <gtest/gtest.h>

#include <QTest>

#include <set>

namespace {

/// A view of 400 x 300 that shows a grey frame twice as large, with a page from (100, 80) to (700, 520).
class ShotHintTest : public ::testing::Test
{
protected:
    ShotHintTest()
    {
        view_.resize(400, 300);
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
    }

    void show(MirvakShot shot, bool found = true)
    {
        PageMark mark;
        mark.shot = shot;
        if (found)
            mark.corners << QPointF(100, 80) << QPointF(700, 80) << QPointF(700, 520) << QPointF(100, 520);
        view_.SetPageMark(mark);
        view_.SetImageData(plain({800, 600}, QColor(120, 120, 120)));
        QCoreApplication::processEvents();
    }

    QString said() const { return hint_->isVisible() ? hint_->accessibleName() : QString(); }

    /// How often the line along the page's upper side changes between bright and dark, and its colours.
    int changesAlongSide(std::set<QRgb>& colours)
    {
        const QImage image = view_.grab().toImage();
        int changes = 0;
        for (int x = 80; x < 320; ++x) {
            colours.insert(image.pixel(x, 40));
            const int step = qGray(image.pixel(x, 40)) - qGray(image.pixel(x - 1, 40));
            changes += qAbs(step) > 60 ? 1 : 0;
        }
        return changes;
    }

    VideoView view_;
    ShotHint* hint_ = view_.findChild<ShotHint*>();
};

TEST_F(ShotHintTest, TheOutlineTellsByItsLineWhetherThePageWillBeGood)
{
    std::set<QRgb> good, flawed, plainLine;
    show(MIRVAK_SHOT_GOOD);
    EXPECT_EQ(changesAlongSide(good), 0) << "solid";
    EXPECT_GT(qGreen(*good.begin()), qRed(*good.begin()) + 100);
    show(MIRVAK_SHOT_TOO_BLURRED);
    EXPECT_GT(changesAlongSide(flawed), 15) << "dashes";
    EXPECT_EQ(flawed.count(*good.begin()), 0U);
    const QRgb untouched = qRgb(120, 120, 120);
    EXPECT_EQ(flawed.count(untouched), 0U) << "no gap shows what is below";
    for (const MirvakShot shot : {MIRVAK_SHOT_LOOKING, MIRVAK_SHOT_NO_PAGE})
        show(shot), changesAlongSide(plainLine);
    show(MIRVAK_SHOT_GOOD, false), changesAlongSide(plainLine);
    EXPECT_EQ(plainLine, std::set<QRgb>{untouched});
}

TEST_F(ShotHintTest, SaysWhatIsWrongForAsLongAsItIs)
{
    std::set<QString> texts;
    for (int shot = MIRVAK_SHOT_LEAVES_PICTURE; shot <= MIRVAK_SHOT_NOT_SURE; ++shot) {
        show(MirvakShot(shot));
        texts.insert(said());
    }
    EXPECT_EQ(texts.size(), 6U);
    EXPECT_EQ(texts.count(QString()), 0U);
    for (const char* text : {"page leaves the picture", "too blurred", "reflection on the page"})
        EXPECT_EQ(texts.count(QLatin1String(text)), 1U) << text;
    EXPECT_EQ(hint_->x(), 10);
    EXPECT_TRUE(view_.rect().contains(hint_->geometry()));
    const QString longest = QStringLiteral("reflection on the page");
    show(MIRVAK_SHOT_GOOD);
    show(MIRVAK_SHOT_TOO_DARK); // has room for few words, until it says more
    show(MIRVAK_SHOT_REFLECTION, false);
    EXPECT_EQ(said(), longest) << "an outline that is missed once";
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return hint_->width() >= hint_->fontMetrics().horizontalAdvance(longest); }));
    for (const MirvakShot shot : {MIRVAK_SHOT_GOOD, MIRVAK_SHOT_LOOKING, MIRVAK_SHOT_NO_PAGE}) {
        show(MIRVAK_SHOT_MOVING);
        show(shot);
        EXPECT_FALSE(hint_->isVisible()) << shot;
    }
    show(MIRVAK_SHOT_MOVING);
    view_.SetPageMark({}); // another window takes the frames from now on
    QCoreApplication::processEvents();
    EXPECT_EQ(said(), QString());
}

TEST_F(ShotHintTest, SaysNothingOfAPictureThatStandsStillOrIsGone)
{
    show(MIRVAK_SHOT_MOVING);
    view_.toggleFreeze();
    EXPECT_EQ(said(), QString());
    show(MIRVAK_SHOT_TOO_DARK);
    EXPECT_EQ(said(), QString()) << "of the live page";
    view_.toggleFreeze();
    show(MIRVAK_SHOT_TOO_DARK);
    EXPECT_EQ(said(), QStringLiteral("too dark"));
    view_.ClearFrame();
    EXPECT_EQ(said(), QString());
    view_.SetImageData(plain({800, 600}, Qt::gray)); // the next camera's first frame
    QCoreApplication::processEvents();
    EXPECT_EQ(said(), QString());
}

} // namespace

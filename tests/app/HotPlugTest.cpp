// Cameras that come and go while the window shows, as its user sees it. Each camera shows a colour of its
// own.
#include "WindowFixture.h"

#include "ConfigSet.h"
#include "MoveVideoWidget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPainter>

namespace {

class HotPlugTest : public LumroScannerTest
{
protected:
    std::string alpha(const std::string& more = "", int type = 1)
    {
        return camera("Alpha", Qt::red, type, more);
    }
    std::string beta(int type = 2) { return camera("Beta", Qt::green, type); }
    std::string gamma() { return camera("Gamma", Qt::blue, 2); }

    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 15000); }
    static QColor middleOf(QWidget& widget)
    {
        return widget.grab().toImage().pixelColor(widget.rect().center());
    }
    static bool isNear(const QColor& a, const QColor& b)
    {
        return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) + qAbs(a.blue() - b.blue()) < 60;
    }
    using LumroScannerTest::shows;
    void start(const std::string& cameras)
    {
        useDesk(cameras);
        show();
    }
    /// The picture, and the name in the box beside it.
    bool shows(const QColor& colour, const char* name)
    {
        return waitFor([=] {
            return hasPicture() && isNear(middleOf(view()), colour) &&
                   box().currentText() == QLatin1String(name);
        });
    }
    QComboBox& box() const { return *window_->findChild<QComboBox*>(QStringLiteral("comboDevice")); }
    QStringList names() const
    {
        QStringList all;
        for (int row = 0; row < box().count(); ++row)
            all << box().itemText(row);
        return all;
    }
    bool namesBecome(const QStringList& wanted)
    {
        return waitFor([=] { return names() == wanted; });
    }
    void choose(const char* name) { window_->onDeviceChanged(box().findText(QLatin1String(name))); }
    bool unplugged()
    {
        return waitFor([this] { return !hasPicture(); });
    }
    MoveVideoWidget* overlay() const { return window_->findChild<MoveVideoWidget*>(); }
    QCheckBox& secondBox() const { return *window_->findChild<QCheckBox*>(QStringLiteral("checkAssist")); }
    /// The colour in the corner of a capture.
    QColor cornerOfCapture()
    {
        const int before = int(files().size());
        window_->onScanner();
        EXPECT_EQ(files().size(), before + 1);
        return QImage(pictures() + QLatin1Char('/') + files().last()).pixelColor(8, 8);
    }

    const QColor red_ = Qt::red, green_ = Qt::green, blue_ = Qt::blue;
};

TEST_F(HotPlugTest, TheBoxOpensWhatItNamesAfterAnUnplug)
{
    start(alpha() + ", " + beta() + ", " + gamma());
    ASSERT_TRUE(shows(red_, "Alpha"));
    changeDesk(beta() + ", " + gamma());
    ASSERT_TRUE(unplugged());
    ASSERT_TRUE(namesBecome({QStringLiteral("Beta"), QStringLiteral("Gamma")}));
    EXPECT_EQ(box().currentIndex(), -1) << "none of them is shown";
    EXPECT_EQ(window_->findChild<QComboBox*>(QStringLiteral("comboResolution"))->count(), 0);
    choose("Beta");
    ASSERT_TRUE(shows(green_, "Beta"));
    window_->onResolutionChanged(1);
    EXPECT_TRUE(shows(green_, "Beta"));

    changeDesk(alpha() + ", " + beta() + ", " + gamma()); // what the box does not know yet
    choose("Gamma");
    EXPECT_TRUE(shows(blue_, "Gamma"));
    ASSERT_TRUE(namesBecome({QStringLiteral("Alpha"), QStringLiteral("Beta"), QStringLiteral("Gamma")}));
    choose("Alpha");
    ASSERT_TRUE(shows(red_, "Alpha"));
    choose("Beta");
    ASSERT_TRUE(shows(green_, "Beta"));
    secondBox().setEnabled(true);
    secondBox().click();
    ASSERT_TRUE(overlay());
    EXPECT_TRUE(waitFor([this] { return isNear(middleOf(*overlay()), blue_); })) << "the other one";
    EXPECT_EQ(messages_, QStringList());
}

TEST_F(HotPlugTest, OneThatIsPluggedInBesideAnotherAppearsInTheBoxOnly)
{
    start(alpha());
    ASSERT_TRUE(shows(red_, "Alpha"));
    changeDesk(beta() + ", " + alpha());
    ASSERT_TRUE(namesBecome({QStringLiteral("Beta"), QStringLiteral("Alpha")}));
    changeDesk(gamma() + ", " + alpha()); // as many, but others
    ASSERT_TRUE(namesBecome({QStringLiteral("Gamma"), QStringLiteral("Alpha")}));
    EXPECT_TRUE(shows(red_, "Alpha"));
    EXPECT_TRUE(isNear(cornerOfCapture(), red_));
    window_->onSettings();
    box().setCurrentIndex(0);
    choose("Gamma");
    EXPECT_TRUE(shows(red_, "Alpha")) << "no choice while a dialog is open";
    window_->onSettings();
    choose("Gamma");
    EXPECT_TRUE(shows(blue_, "Gamma"));
}

TEST_F(HotPlugTest, OneThatIsPluggedInWhenNoneWorksIsOpenedWhateverItsKind)
{
    const std::string infrared = camera("Infrared", Qt::gray, 3);
    start(infrared);
    EXPECT_FALSE(hasPicture());
    changeDesk(infrared + ", " + beta());
    ASSERT_TRUE(shows(green_, "Beta"));
    changeDesk(infrared);
    ASSERT_TRUE(unplugged());
    changeDesk(infrared + ", " + gamma());
    ASSERT_TRUE(shows(blue_, "Gamma"));
    changeDesk(infrared + ", " + gamma() + ", " + beta());
    ASSERT_TRUE(shows(green_, "Beta")) << "the lost one is back soon";
    changeDesk("");
    ASSERT_TRUE(unplugged());
    changeDesk(gamma());
    ASSERT_TRUE(shows(blue_, "Gamma"));
    changeDesk(gamma() + ", " + alpha()); // the other head of the same device
    EXPECT_TRUE(shows(red_, "Alpha"));
}

TEST_F(HotPlugTest, WhatDoesNotOpenYetIsWaitedForAndHoldsNobodyUp)
{
    start(alpha());
    ASSERT_TRUE(shows(red_, "Alpha"));
    for (const auto& [fault, reason] : {std::pair{"refused = true;", "permission to use Alpha"},
                                        std::pair{"held = true;", "Alpha is in use by another program"},
                                        std::pair{"fail_start = true;", "Alpha does not start"},
                                        std::pair{"fail_create = true;", "Alpha does not start"}}) {
        changeDesk("");
        ASSERT_TRUE(unplugged());
        ASSERT_TRUE(namesBecome({}));
        changeDesk(alpha(fault));
        const QString text = QLatin1String(reason);
        ASSERT_TRUE(waitFor([=] { return view().GetShowInfo().contains(text); }))
            << fault << qPrintable(view().GetShowInfo());
        ::testing::internal::CaptureStderr();
        window_->onScanner();
        EXPECT_EQ(window_->GetImageSync(std::chrono::seconds(2)), nullptr);
        const std::string errors = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(errors.find("timeout"), std::string::npos) << fault;
        EXPECT_TRUE(files().isEmpty());
        changeDesk(alpha());
        ASSERT_TRUE(shows(red_, "Alpha")) << fault;
    }
    EXPECT_EQ(messages_, QStringList()) << "it mends itself";

    useDesk(alpha("held = true;")); // at the start of the program
    show();
    EXPECT_FALSE(hasPicture());
    window_->onScanner();
    changeDesk(alpha());
    EXPECT_TRUE(shows(red_, "Alpha"));
    EXPECT_EQ(messages_, QStringList());
}

TEST_F(HotPlugTest, AResolutionThatFailedToStartIsNotRemembered)
{
    start(alpha());
    ASSERT_TRUE(shows(red_, "Alpha"));
    changeDesk(alpha("fail_start = true;") + ", " + beta());
    ASSERT_TRUE(namesBecome({QStringLiteral("Alpha"), QStringLiteral("Beta")}));
    window_->onResolutionChanged(1);
    EXPECT_EQ(messages_, (QStringList{QStringLiteral("Error"), QStringLiteral("video create failed!")}));
    EXPECT_EQ(settings::cameraResolution.read(store_), 0);
    window_->onScanner();
    EXPECT_TRUE(files().isEmpty());
    changeDesk(alpha() + ", " + beta());
    ASSERT_TRUE(shows(red_, "Alpha"));
    EXPECT_EQ(view().GetResolutionCurrentIndex(), 0) << "the last one that worked";
}

TEST_F(HotPlugTest, TheSecondCameraStaysWhileTheMainOneIsAway)
{
    start(alpha() + ", " + beta());
    ASSERT_TRUE(shows(red_, "Alpha"));
    secondBox().click();
    ASSERT_TRUE(overlay());
    changeDesk(beta());
    ASSERT_TRUE(unplugged());
    changeDesk(beta() + ", " + alpha());
    ASSERT_TRUE(shows(red_, "Alpha"));
    ASSERT_TRUE(overlay() && secondBox().isChecked());
    EXPECT_TRUE(waitFor([this] { return isNear(middleOf(*overlay()), green_); }));

    secondBox().click();
    ASSERT_FALSE(overlay() && overlay()->isVisible());
    changeDesk(alpha());
    ASSERT_TRUE(namesBecome({QStringLiteral("Alpha")}));
    const QImage before = view().grab().toImage();
    secondBox().click();
    EXPECT_FALSE(secondBox().isChecked());
    EXPECT_NE(view().grab().toImage(), before) << "a notice says that there is none";
}

TEST_F(HotPlugTest, ThePaperSizeIsTheChosenOneAfterEveryReopening)
{
    QImage framed = solid(640, 480, Qt::red);
    QPainter(&framed).fillRect(80, 60, 480, 360, Qt::green);
    const std::string desk = camera("", 1, "1b171840");
    settings::scanSize.write(store_, 1); // A4: the middle
    ASSERT_TRUE(shows(desk, framed));
    EXPECT_TRUE(isNear(cornerOfCapture(), green_)) << "at the start";
    window_->onResolutionChanged(1);
    EXPECT_TRUE(isNear(cornerOfCapture(), green_)) << "at another resolution";
    changeDesk("");
    ASSERT_TRUE(unplugged());
    changeDesk(desk);
    ASSERT_TRUE(waitForPicture());
    EXPECT_TRUE(isNear(cornerOfCapture(), green_)) << "after the cable";

    settings::scanSize.write(store_, 2); // A3: all of it
    Q_EMIT window_->findChild<ConfigSet*>()->scansizechanged(2);
    EXPECT_TRUE(waitFor([this] { return isNear(cornerOfCapture(), red_); }));
    window_->onDeviceChanged(0);
    EXPECT_TRUE(isNear(cornerOfCapture(), red_));
    Q_EMIT window_->findChild<ConfigSet*>()->scansizechanged(1);
    EXPECT_TRUE(waitFor([this] { return isNear(cornerOfCapture(), green_); }));
}

} // namespace

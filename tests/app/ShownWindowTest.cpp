// What the window shows is what it saves, or it says so.
#include "WindowFixture.h"

#include "AutoScan.h"
#include "ConfigSet.h"
#include "FirstSide.h"
#include "FrozenBar.h"
#include "More.h"
#include "MoveVideoView.h"
#include "MoveVideoWidget.h"
#include "PdfEx.h"
#include "ToolBar.h"
#include "WaitingSign.h"

#include <QCheckBox>
#include <QSignalSpy>

namespace {

class ShownWindowTest : public LumroScannerTest
{
protected:
    QColor middleOf(const QImage& image) const { return image.pixelColor(image.rect().center()); }
    QColor saved(int number) const
    {
        return middleOf(QImage(pictures() + QLatin1Char('/') + files().at(number)));
    }
};

TEST_F(ShownWindowTest, TheFrozenPageCanBeSavedWhileCapturesSaveTheLiveOne)
{
    std::filesystem::create_directory(folder().file("turns"));
    for (const auto& [name, colour] : {std::make_pair("1.png", Qt::red), std::make_pair("2.png", Qt::blue)})
        solid(640, 480, colour).save(QString::fromStdString(folder().file("turns/") + name));
    std::string turning = camera("hold = 0.0;"); // another page with each frame
    ASSERT_TRUE(shows(turning.replace(turning.find("page.jpg"), 8, "turns")));
    auto* bar = view().findChild<FrozenBar*>();
    for (int i = 0; i < 4; ++i) {
        EXPECT_FALSE(bar->isVisible());
        view().toggleFreeze();
        ASSERT_TRUE(bar->isVisible());
        EXPECT_EQ(bar->pos(), QPoint(10, 54)) << "below the tools";
        const QColor frozen = middleOf(view().grab().toImage());
        click("buttonSaveFrozen");
        ASSERT_EQ(files().size(), i + 1);
        EXPECT_EQ(saved(i).red() > 128, frozen.red() > 128) << i;
        EXPECT_TRUE(view().isFrozen());
        view().toggleFreeze();
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 4; }));
    view().toggleFreeze();
    window_->setMergePending(true);
    click("buttonSaveFrozen");
    EXPECT_TRUE(messages_.contains(QStringLiteral("Please complete the image merge first!")));
    EXPECT_EQ(files().size(), 4);
    window_->setMergePending(false);
    settings::scanType.write(store_, 2);
    click("buttonSaveFrozen");
    ASSERT_EQ(files().size(), 5);
    EXPECT_EQ(saved(4).red(), saved(4).blue()) << "in the chosen colours: black and white";
    settings::scanType.write(store_, 0);
    const auto other = [&, before = middleOf(view().grab().toImage()).red() > 128] {
        window_->onScanner();
        return (saved(files().size() - 1).red() > 128) != before;
    };
    EXPECT_TRUE(QTest::qWaitFor(other)) << "captures stay live";
    Q_EMIT view().findChild<ToolBar*>()->clickRotateSign(1);
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(ShownWindowTest, AFrozenPictureThatNoFrameFollowsOffersNothingToSave)
{
    ASSERT_TRUE(shows(camera("stall_after = 0.3;")));
    const auto* button = window_->findChild<QPushButton*>(QStringLiteral("buttonSaveFrozen"));
    const auto isStalled = [&] {
        view().toggleFreeze();
        const bool offered = button->isVisible();
        EXPECT_TRUE(view().findChild<FrozenBar*>()->isVisible());
        view().toggleFreeze();
        return !offered;
    };
    EXPECT_TRUE(QTest::qWaitFor(isStalled, 10000));
}

TEST_F(ShownWindowTest, TheInsetSaysWhenItIsLeftOut)
{
    ASSERT_TRUE(shows(camera() + ", " + camera("", 2, "0bda5801")));
    window_->findChild<QCheckBox*>(QStringLiteral("checkAssist"))->click();
    auto* inset = window_->findChild<MoveVideoWidget*>()->findChild<MoveVideoView*>();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !inset->frameSize().isEmpty(); }));
    const auto isBare = [&] { // only the yellow picture
        const QColor low = inset->grab().toImage().pixelColor(inset->width() / 2, inset->height() - 3);
        return low.red() > 200 && low.green() > 200;
    };
    EXPECT_FALSE(isBare());
    window_->onSettings();
    auto* composite =
        window_->findChild<ConfigSet*>()->findChild<QCheckBox*>(QStringLiteral("checkComposite"));
    composite->setChecked(true);
    EXPECT_TRUE(isBare());
    composite->setChecked(false);
    EXPECT_FALSE(isBare());
}

TEST_F(ShownWindowTest, TheTimedCountIsThatOfTheStripAndTheFolder)
{
    settings::autoScanDelay.write(store_, 1);
    settings::setSavePath(store_, QString::fromStdString(folder().file("no/such/parent")));
    ASSERT_TRUE(shows(camera()));
    click("btnAutoScanner");
    auto* dialog = window_->findChild<AutoScan*>();
    const auto count = [&] {
        return dialog->findChild<QLabel*>(QStringLiteral("labelTimerCount"))->text().toInt();
    };
    QSignalSpy ticks(dialog, &AutoScan::timerScanReady);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks.size() >= 2 && !notice().isEmpty(); }, 20000));
    EXPECT_EQ(count(), 0);
    settings::setSavePath(store_, pictures());
    const auto haveTwo = [&] {
        EXPECT_EQ(count(), strip().Count());
        EXPECT_LE(count(), files().size());
        return count() == 2;
    };
    EXPECT_TRUE(QTest::qWaitFor(haveTwo, 20000));
    dialog->reject();
}

TEST_F(ShownWindowTest, ACaptureThatWaitsSaysSoPaintsTakesNoCommandAndEndsWithEscape)
{
    useDesk(camera("corrupt_every = 1;")); // none that could be shown
    show();
    std::function<QWidget*()> front = [this]() -> QWidget* { return &view(); };
    const std::vector<std::function<void()>> commands{[this] { window_->onScanner(); },
                                                      [this] { window_->onDocument(); },
                                                      [this] { window_->onPicCompose(); },
                                                      [this] { window_->onPdf(); },
                                                      [this] { window_->onBarcode(); },
                                                      [this] { window_->onOcr(); },
                                                      [&] {
                                                          window_->onPdfEx();
                                                          auto* pages = window_->findChild<PdfEx*>();
                                                          front = [=] { return pages; };
                                                          pages->onScannerImg();
                                                          pages->close();
                                                      }};
    for (size_t i = 0; i < commands.size(); ++i) {
        int waits = 0;
        bool isPainted = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            auto* sign = front()->findChild<WaitingSign*>();
            if (!sign)
                return;
            ++waits;
            click("btnMore");
            LumroScanner::hidkeydevcallback(2, window_.get());
            window_->onScanner(); // a second one would never come back
            isPainted = sign->isVisible() && !sign->visibleRegion().isEmpty();
            QTest::keyClick(window_.get(), Qt::Key_Escape);
            poll.stop();
        });
        poll.start(10);
        ::testing::internal::CaptureStderr();
        commands[i]();
        EXPECT_EQ(::testing::internal::GetCapturedStderr().find("timeout"), std::string::npos) << i;
        EXPECT_EQ(waits, 1) << i;
        EXPECT_TRUE(isPainted) << i;
        QCoreApplication::processEvents();
        EXPECT_FALSE(window_->findChild<WaitingSign*>()) << i;
        EXPECT_FALSE(QApplication::overrideCursor()) << i;
        EXPECT_FALSE(window_->findChild<More*>()->isVisible()) << i;
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ShownWindowTest, WithoutACameraEveryButtonSaysSoUntilOneIsPluggedIn)
{
    useDesk("");
    show();
    EXPECT_FALSE(hasPicture());
    auto* cropping = window_->findChild<QPushButton*>(QStringLiteral("buttonDeskew"));
    cropping->click(); // needs a device
    EXPECT_EQ(settings::deskew.read(store_), 0);
    for (const char* button :
         {"btnScanner", "btnDocument", "btnPdf", "btnRecord", "btnPicCompose", "btnOcr"}) {
        view().ShowNotice(QString());
        click(button);
        EXPECT_EQ(notice(), QStringLiteral("No found device!")) << button;
    }
    EXPECT_TRUE(files().isEmpty() && messages_.isEmpty());
    changeDesk(camera());
    EXPECT_TRUE(waitForPicture());
    EXPECT_FALSE(cropping->isChecked()) << "it shows what captures are";
}

TEST_F(ShownWindowTest, TheFirstSideStaysInSightAndCanBeGivenUp)
{
    ASSERT_TRUE(shows(camera()));
    auto* side = view().findChild<FirstSide*>();
    const auto* tools = view().findChild<ToolBar*>();
    const std::vector<std::function<void()>> waysOut{
        [this] { QTest::keyClick(window_.get(), Qt::Key_Escape); }, [this] { click("buttonGiveUpMerge"); }};
    for (const auto& giveUp : waysOut) {
        window_->onCardCompose();
        ASSERT_TRUE(side->isVisible());
        const QRect place = side->geometry();
        EXPECT_EQ(place.right(), view().width() - 11);
        EXPECT_TRUE(place.top() >= 54 && place.bottom() < view().height() - 10) << "between tools and notes";
        const QColor shown = middleOf(side->grab().toImage());
        EXPECT_TRUE(shown.red() > 200 && shown.green() > 200 && shown.blue() < 60) << "the picture itself";
        const auto before = files().size();
        giveUp();
        EXPECT_FALSE(side->isVisible());
        EXPECT_TRUE(tools->isEnabled());
        window_->onScanner();
        EXPECT_EQ(files().size(), before + 1);
        EXPECT_TRUE(messages_.isEmpty());
    }
    window_->onCardCompose();
    window_->onCardCompose();
    EXPECT_FALSE(side->isVisible()) << "both sides are taken";
}

} // namespace

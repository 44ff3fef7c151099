#include "BtnControl.h"
#include "FreshSettings.h"
#include "FunctionButtons.h"
#include "LanguageFolder.h"
#include "Look.h"
#include "More.h"
#include "Settings.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <vector>

namespace {

/// Bit i set: function button i stands in the bar.
int shownMask(const BtnControl& bar)
{
    int mask = 0;
    const QList<QPushButton*> buttons = bar.findChildren<QPushButton*>();
    for (int i = 0; i < functionButtons::count; ++i)
        mask |= buttons[i]->isHidden() ? 0 : 1 << i;
    return mask;
}

/// The picture a style sheet names first.
QString picture(const QWidget& widget)
{
    return widget.styleSheet().section(QStringLiteral("url("), 1, 1).section(QLatin1Char(')'), 0, 0);
}

bool placedApart(const QWidget& container, const QList<QPushButton*>& buttons)
{
    QRegion taken;
    for (const QPushButton* button : buttons) {
        const QRect place = button->isVisible() ? button->geometry() : QRect();
        if (taken.intersects(place) || !(place.isNull() || container.rect().contains(place)))
            return false;
        taken += place;
    }
    return true;
}

} // namespace

using ButtonBar = FreshSettings;

TEST_F(ButtonBar, TicksShowHideAndStoreOneButtonEach)
{
    BtnControl bar;
    bar.onDisplayMoreCheck(3, Qt::Unchecked);
    EXPECT_EQ(settings::buttonId.read(settings), 0xCDE7);
    EXPECT_EQ(shownMask(bar), 0xCDE7);
    EXPECT_EQ(bar.visibleCount(), 11);

    bar.onDisplayMoreCheck(3, Qt::PartiallyChecked);
    bar.onDisplayMoreCheck(17, Qt::Checked);
    bar.onDisplayMoreCheck(-1, Qt::Unchecked);
    bar.onDisplayCheckBox(3, true);
    EXPECT_EQ(settings::buttonId.read(settings), 0xCDE7);
    EXPECT_EQ(bar.visibleCount(), 11);

    bar.onDisplayMoreCheck(3, Qt::Checked);
    EXPECT_EQ(settings::buttonId.read(settings), 0xCDEF);

    settings::buttonId.write(settings, 0); // a tick flips its own bit of whatever is stored
    bar.onDisplayMoreCheck(16, Qt::Checked);
    EXPECT_EQ(settings::buttonId.read(settings), 1 << 16);
    EXPECT_EQ(shownMask(bar), 0xCDEF | 1 << 16);
    const BtnControl other; // has the default buttons whatever is stored
    EXPECT_EQ(shownMask(other), 0xCDEF);
    EXPECT_EQ(other.visibleCount(), 12);
    EXPECT_EQ(settings::buttonId.read(settings), 1 << 16);
}

TEST_F(ButtonBar, EveryButtonEmitsItsOwnSignalAndADoubleClickOne)
{
    const QStringList expected =
        QStringLiteral("Scanner Document Barcode PicCompose CardCompose Record AutoScanner Ocr "
                       "ReadIdCard Print Pdf PdfEx Sign FingerPrint Bookscan Face Laohua More")
            .split(QLatin1Char(' '));
    BtnControl bar;
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (const QString& name : expected) // as SIGNAL() writes it
        spies.push_back(
            std::make_unique<QSignalSpy>(&bar, qPrintable(QStringLiteral("2btn%1Clicked()").arg(name))));
    const QList<QPushButton*> buttons = bar.findChildren<QPushButton*>();
    ASSERT_EQ(buttons.size(), expected.size());
    for (int clicked = 0; clicked < buttons.size(); ++clicked) {
        buttons[clicked]->click();
        for (int i = 0; i < buttons.size(); ++i)
            EXPECT_EQ(spies[std::size_t(i)]->count(), i <= clicked ? 1 : 0)
                << clicked << " -> " << qPrintable(expected[i]);
    }

    bar.show();
    QSignalSpy picture(&bar, &BtnControl::btnPicComposeClicked);
    QSignalSpy card(&bar, &BtnControl::btnCardComposeClicked);
    for (const char* name : {"btnPicCompose", "btnCardCompose"}) {
        auto* button = bar.findChild<QPushButton*>(QLatin1String(name));
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::mouseDClick(button, Qt::LeftButton); // the second press of a double click
        QTest::mouseRelease(button, Qt::LeftButton);
        QTest::mouseClick(button, Qt::LeftButton);
    }
    EXPECT_EQ(picture.count(), 2);
    EXPECT_EQ(card.count(), 2);
}

TEST_F(ButtonBar, TakesItsPicturesFromTheLanguageFolder)
{
    settings::appLanguage.write(settings, 1);
    BtnControl bar;
    const QList<QPushButton*> buttons = bar.findChildren<QPushButton*>();
    const QString morePicture = picture(*buttons.last());
    EXPECT_EQ(picture(*buttons[0]), QStringLiteral(":/images/en/images/en/capture.png"));
    EXPECT_EQ(picture(*buttons[16]), QStringLiteral(":/images/en/images/en/Laohua.png"));
    EXPECT_EQ(morePicture, QStringLiteral(":/images/common/images/common/more.png"));
    for (const QPushButton* button : buttons)
        EXPECT_TRUE(QFile::exists(picture(*button))) << qPrintable(picture(*button));

    bar.SetButtonsStyle(QStringLiteral("pl"), QStringLiteral("pl"));
    EXPECT_EQ(picture(*buttons[16]), QStringLiteral(":/images/pl/images/pl/Laohua.png"));
    EXPECT_EQ(picture(*buttons.last()), morePicture);

    for (const int index : {-1, 13, 14, 17, 18})
        bar.SetButtonStyle(QStringLiteral("jp"), QStringLiteral("jp"), index);
    EXPECT_EQ(picture(*buttons[13]), QStringLiteral(":/images/jp/images/jp/fingerprint.png"));
    EXPECT_EQ(picture(*buttons[14]), QStringLiteral(":/images/pl/images/pl/bookscan.png"));
    EXPECT_EQ(picture(*buttons.last()), morePicture);
}

TEST_F(ButtonBar, FlowsIntoRowsWithoutOverlap)
{
    BtnControl bar;
    const QList<QPushButton*> buttons = bar.findChildren<QPushButton*>();
    EXPECT_LT(bar.heightForWidth(800), 2 * 60) << "the default buttons need one row of 800 px";
    for (int i = 0; i < functionButtons::count; ++i)
        bar.onDisplayMoreCheck(i, Qt::Checked);
    bar.show();
    for (const int width : {1920, 1024, 800, 300}) {
        bar.resize(width, bar.heightForWidth(width));
        QCoreApplication::processEvents();
        EXPECT_TRUE(placedApart(bar, buttons)) << width;
        QRect used;
        for (const QPushButton* button : buttons)
            used |= button->geometry();
        EXPECT_LE(qAbs(used.center().x() - bar.rect().center().x()), 1) << width;
        EXPECT_LE(qAbs(used.center().y() - bar.rect().center().y()), 1) << width;
        EXPECT_GE(used.top(), 4) << "the margin of the layout";
    }
    const auto inFirstRow = [&] {
        bar.resize(800, bar.heightForWidth(800));
        QCoreApplication::processEvents();
        QVector<int> places;
        for (const QPushButton* button : buttons)
            if (button->isVisible() && button->y() == buttons[0]->y())
                places << button->x();
        return places;
    };
    EXPECT_EQ(inFirstRow().size(), 9) << "half of 18, though 13 would find room";
    bar.onDisplayMoreCheck(3, Qt::Unchecked);
    const QVector<int> places = inFirstRow();
    for (int i = 2; i < places.size(); ++i)
        EXPECT_EQ(places[i] - places[i - 1], places[1] - places[0]) << "no hole where one is hidden";
}

TEST_F(ButtonBar, ThePdfButtonHasAMenuByRightClickKeyAndHold)
{
    BtnControl bar;
    bar.resize(800, bar.heightForWidth(800));
    bar.show();
    auto* button = bar.findChild<QPushButton*>(QStringLiteral("btnPdf"));
    QSignalSpy clicks(&bar, &BtnControl::btnPdfClicked);
    QSignalSpy choices(&bar, &BtnControl::synthesizePdfClicked);
    const auto chooseFromMenu = [&](const char* what) {
        auto* menu = button->findChild<QMenu*>();
        ASSERT_TRUE(menu && menu->isVisible()) << what;
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    const QPoint middle = button->rect().center();
    for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
        QContextMenuEvent event(reason, middle, button->mapToGlobal(middle));
        QCoreApplication::sendEvent(button, &event);
        chooseFromMenu(reason == QContextMenuEvent::Mouse ? "right click" : "key");
    }
    QTest::mousePress(button, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return button->findChild<QMenu*>() != nullptr; }));
    QTest::mouseRelease(button, Qt::LeftButton);
    chooseFromMenu("hold");
    EXPECT_EQ(choices.count(), 3);
    EXPECT_EQ(clicks.count(), 0) << "a hold is no click";
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_TRUE(button->toolTip().contains(button->accessibleDescription()));
}

TEST_F(ButtonBar, ThePdfButtonsMenuSwitchesWhatItsFilesAre)
{
    BtnControl bar;
    bar.show();
    auto* button = bar.findChild<QPushButton*>(QStringLiteral("btnPdf"));
    const QPoint middle = button->rect().center();
    const auto choose = [&](int entry) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, button->mapToGlobal(middle));
        QCoreApplication::sendEvent(button, &event);
        auto* menu = button->findChild<QMenu*>();
        for (int i = 0; i < entry; ++i)
            QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    EXPECT_FALSE(settings::pdfText.read() || settings::pdfArchive.read()) << "at first";
    choose(2);
    EXPECT_TRUE(settings::pdfText.read() && !settings::pdfArchive.read());
    choose(3);
    EXPECT_TRUE(settings::pdfText.read() && settings::pdfArchive.read());
    settings::pdfText.write(settings, false); // in another window
    choose(2);
    EXPECT_TRUE(settings::pdfText.read()) << "it shows what holds when it opens";
    choose(3);
    EXPECT_FALSE(settings::pdfArchive.read());
}

TEST(LanguageFolder, FollowsTheSettingThenTheLocale)
{
    const QLocale taiwan(QLocale::Chinese, QLocale::Taiwan);
    const QLocale china(QLocale::Chinese, QLocale::China);
    EXPECT_EQ(languageFolder(0, taiwan), QStringLiteral("zh"));
    EXPECT_EQ(languageFolder(1, china), QStringLiteral("en"));
    EXPECT_EQ(languageFolder(-1, china), QStringLiteral("zh"));
    EXPECT_EQ(languageFolder(-1, taiwan), QStringLiteral("hk"));
    EXPECT_EQ(languageFolder(2, QLocale(QLocale::Polish)), QStringLiteral("pl"));
    EXPECT_EQ(languageFolder(7, QLocale(QLocale::Japanese)), QStringLiteral("jp"));
    EXPECT_EQ(languageFolder(2, QLocale(QLocale::Russian)), QStringLiteral("en"));
}

using MoreWindow = FreshSettings;

TEST_F(MoreWindow, StartsWithTheDefaultTicksChinesePicturesAndTheLanguageOfTheStart)
{
    settings::buttonId.write(settings, 0);
    settings::appLanguage.write(settings, 1);
    More more;
    more.show();
    const QList<QCheckBox*> boxes = more.findChildren<QCheckBox*>();
    ASSERT_EQ(boxes.size(), functionButtons::count);
    for (int i = 0; i < boxes.size(); ++i) {
        EXPECT_EQ(boxes[i]->isChecked(), bool(0xCDEF >> i & 1)) << i;
        const QString expected = QStringLiteral(":/images/zh/images/zh/%1.png")
                                     .arg(QLatin1String(functionButtons::identifiers[std::size_t(i)]));
        EXPECT_EQ(picture(*boxes[i]), expected);
    }
    EXPECT_EQ(more.size(), QSize(800, 600));
    more.setFixedSize(430, 600); // as on a small screen
    QCoreApplication::processEvents();
    for (const QCheckBox* box : boxes)
        EXPECT_LE(box->mapTo(&more, box->rect().bottomRight()).x(), 430);

    for (const auto& [running, chosen] : {std::pair(1, 0), std::pair(0, 1)}) {
        settings::appLanguage.write(settings, running);
        More other;
        settings::appLanguage.write(settings, chosen); // before it is first shown
        other.show();
        for (const char* name : {"labelCapture", "labelLaohua"})
            EXPECT_EQ(other.findChild<QLabel*>(QLatin1String(name))->text().isEmpty(), running == 0)
                << "the pictures say it in Chinese";
    }
}

TEST_F(MoreWindow, AClickReportsTheBoxAndReachesTheBarAndTheStore)
{
    More more;
    BtnControl bar;
    QObject::connect(
        &more, QOverload<int, int>::of(&More::displayCheckBox), &bar, &BtnControl::onDisplayMoreCheck);
    QSignalSpy clicks(&more, QOverload<int, bool>::of(&More::displayCheckBox));
    QSignalSpy states(&more, QOverload<int, int>::of(&More::displayCheckBox));
    more.show();
    QCheckBox* synthesis = more.findChildren<QCheckBox*>()[3];
    const QImage ticked = synthesis->grab().toImage();

    QTest::mouseClick(synthesis, Qt::LeftButton, {}, QPoint(100, 100)); // the whole picture takes clicks
    EXPECT_EQ(clicks, (QList<QVariantList>{{3, false}}));
    EXPECT_EQ(states, (QList<QVariantList>{{3, int(Qt::Unchecked)}}));
    EXPECT_EQ(settings::buttonId.read(settings), 0xCDE7);
    EXPECT_EQ(shownMask(bar), 0xCDE7);
    EXPECT_NE(synthesis->grab().toImage(), ticked) << "the tick must be seen";
    const auto whereTheTickTurns = [synthesis] { // in the circle of 22 px at the upper right
        return synthesis->grab().toImage().pixelColor(synthesis->width() - 27 + 10, 5 + 15).lightness();
    };
    EXPECT_LT(whereTheTickTurns(), 150);

    synthesis->setChecked(true); // not by the user: a state, no click
    EXPECT_GT(whereTheTickTurns(), 200);
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_EQ(states.count(), 2);
    QTest::mouseClick(more.findChild<QPushButton*>(QStringLiteral("buttonClose")), Qt::LeftButton);
    EXPECT_FALSE(more.isVisible());
}

// What becomes of one listed file after the capture, by mouse and keys.
#include "AfterTheCapture.h"
#include "CropDialog.h"
#include "EntryBar.h"
#include "LeftOverFiles.h"
#include "ThumbnailList.h"
#include "TimerEnd.h"

#include <filesystem>

TEST_F(AfterTheCapture, PicturesAreTurnedAndTakenBackStepByStep)
{
    list({QStringLiteral("a.JPG"), QStringLiteral("b.png"), QStringLiteral("c.bmp")});
    const std::string original = bytes("c.bmp");
    const auto isVeiled = [this] { return entries->item(2)->data(ThumbnailList::busyRole).toBool(); };
    key(Qt::Key_R, Qt::ControlModifier); // is another command
    EXPECT_FALSE(isVeiled());
    key(Qt::Key_R);
    EXPECT_TRUE(isVeiled());
    key(Qt::Key_R); // no waiting for the first
    key(Qt::Key_F2);
    EXPECT_FALSE(name()->isVisible()) << "not while it is being worked on";
    ASSERT_TRUE(becomes(QStringLiteral("c.bmp"), 'r'));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isVeiled(); }));
    key(Qt::Key_R, Qt::ShiftModifier);
    ASSERT_TRUE(becomes(QStringLiteral("c.bmp"), 't'));
    EXPECT_EQ(QImage(file(QStringLiteral("c.bmp"))).size(), QSize(48, 64));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return entries->item(2)->icon().actualSize(QSize(500, 500)).width() == 75;
    })) << "the entry shows it";
    leftOverFiles::remove(QString::fromStdString(dir.path()));
    EXPECT_EQ(hidden().size(), 3) << "what it was is kept";
    entries->selectAll();
    key(Qt::Key_R);
    EXPECT_TRUE(becomes(QStringLiteral("a.JPG"), 't') && becomes(QStringLiteral("b.png"), 't'));
    EXPECT_TRUE(becomes(QStringLiteral("c.bmp"), 'r'));
    save(QStringLiteral("d.png"));
    strip.AddImage(file(QStringLiteral("d.png")), 0);
    strip.RemoveItem(0, true);
    undo();
    EXPECT_EQ(strip.Count(), 4) << "the deletion came last";
    EXPECT_EQ(redOf(file(QStringLiteral("c.bmp"))), 'r');
    strip.RemoveItem(0, false);
    entries->selectAll();
    for (int i = 0; i < 6; ++i) // more than there is to be taken back
        undo();
    EXPECT_TRUE(QTest::qWaitFor([&] { return hidden().isEmpty(); }));
    EXPECT_EQ(bytes("c.bmp"), original);
    EXPECT_EQ(redOf(file(QStringLiteral("a.JPG"))), 'l');
    EXPECT_EQ(strip.Count(), 3);
}

TEST_F(AfterTheCapture, NamesAreChangedAndTakenBack)
{
    list({QStringLiteral("taken.png"), QStringLiteral("a.png")});
    std::filesystem::create_directory(dir.file("a"));
    key(Qt::Key_R);
    ASSERT_TRUE(becomes(QStringLiteral("a.png"), 't'));
    rename("taken");
    EXPECT_TRUE(name()->isVisible() && says("taken.png"));
    EXPECT_EQ(redOf(file(QStringLiteral("taken.png"))), 'l') << "never replaced";
    for (const char* bad : {".hidden", "../up", "a/b", " "}) {
        name()->clear();
        QTest::keyClicks(name(), QLatin1String(bad));
        QTest::keyClick(name(), Qt::Key_Return);
        EXPECT_TRUE(name()->isVisible()) << bad;
    }
    name()->setText(QStringLiteral("given up"));
    QTest::keyClick(name(), Qt::Key_Escape);
    EXPECT_EQ(names().last(), QStringLiteral("a.png"));
    EXPECT_TRUE(strip.hasFocus());
    hover(1);
    EXPECT_TRUE(strip.findChild<EntryBar*>()->isVisible());
    key(Qt::Key_F2);
    EXPECT_FALSE(strip.findChild<EntryBar*>()->isVisible()) << "it would lie over the entry that is named";
    EXPECT_EQ(name()->text(), QStringLiteral("a")) << "what it is stays";
    QTest::keyClicks(name(), QStringLiteral("x"));
    for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
        QFocusEvent left(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(name(), &left);
    }
    EXPECT_TRUE(name()->isVisible()) << "one who looks something up, or opens its menu, comes back";
    EXPECT_EQ(names().last(), QStringLiteral("a.png"));
    QTest::keyClick(name(), Qt::Key_Escape);
    rename("a.b");
    key(Qt::Key_F2);
    EXPECT_EQ(name()->text(), QStringLiteral("a.b"));
    QTest::keyClick(name(), Qt::Key_Escape);
    rename("a");
    undo();
    undo();
    EXPECT_EQ(names().last(), QStringLiteral("a.png"));
    rename("Invoice 7.PNG");
    EXPECT_EQ(names().last(), QStringLiteral("Invoice 7.png"));
    EXPECT_EQ(entries->item(1)->text(), QStringLiteral("Invoice 7.png"));
    EXPECT_FALSE(QFile::exists(file(QStringLiteral("a.png"))));
    key(Qt::Key_R);
    ASSERT_TRUE(becomes(QStringLiteral("Invoice 7.png"), 'r'));
    save(QStringLiteral("a.png")); // the old name is not free any more
    undo();
    ASSERT_TRUE(becomes(QStringLiteral("Invoice 7.png"), 't'));
    undo();
    EXPECT_TRUE(says("a.png"));
    EXPECT_EQ(redOf(file(QStringLiteral("a.png"))), 'l');
    QFile::remove(file(QStringLiteral("a.png")));
    undo();
    EXPECT_EQ(names().last(), QStringLiteral("a.png"));
    undo();
    EXPECT_TRUE(becomes(QStringLiteral("a.png"), 'l'));
    QFile::remove(file(QStringLiteral("a.png")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 1; })) << "it is followed under its name";
}

TEST_F(AfterTheCapture, NothingIsLostToOthersAndNothingIsLeftBehind)
{
    list({QStringLiteral("a.png"), QStringLiteral("b.png")});
    key(Qt::Key_R);
    strip.RemoveItem(1, true); // while it is being turned
    key(Qt::Key_Home);
    key(Qt::Key_R);
    ASSERT_TRUE(becomes(QStringLiteral("a.png"), 't')) << "after the other";
    EXPECT_FALSE(QFile::exists(file(QStringLiteral("b.png"))));
    EXPECT_EQ(hidden().size(), 2) << "the deleted one and what a.png was";

    const QString other = save(QStringLiteral("a.png"), QSize(30, 20)); // by another program
    undo();
    EXPECT_TRUE(says("a.png"));
    EXPECT_EQ(QImage(other).size(), QSize(30, 20));
    dir.write("a.png", "damaged");
    key(Qt::Key_S);
    EXPECT_TRUE(says("could not be changed"));
    EXPECT_EQ(bytes("a.png"), "damaged");
    save(QStringLiteral("a.png"));
    key(Qt::Key_R);
    ASSERT_TRUE(becomes(QStringLiteral("a.png"), 't'));
    std::string same = bytes("a.png"); // written in place at once, as many bytes of other content
    same.back() = char(same.back() ^ 1);
    dir.write("a.png", same);
    undo();
    EXPECT_TRUE(says("a.png was changed"));
    EXPECT_EQ(bytes("a.png"), same);
    key(Qt::Key_F2);
    strip.AddImage(save(QStringLiteral("short.png")), -1);
    QFile::remove(file(QStringLiteral("a.png")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 1; }));
    EXPECT_FALSE(name()->isVisible()) << "there is nothing left to be named";
    strip.AddImage(save(QStringLiteral("a.png")), -1);
    strip.setFocus();
    endNow(*strip.findChild<QWidget*>(QStringLiteral("noticeBar"))->findChild<QTimer*>());
    key(Qt::Key_R);
    const QString written = save(QStringLiteral("part.png"), QSize(50, 40));
    ASSERT_EQ(std::rename(written.toLocal8Bit().constData(), other.toLocal8Bit().constData()), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !entries->item(0)->data(ThumbnailList::busyRole).toBool(); }));
    EXPECT_TRUE(says("was changed by another program")) << "while it was being turned";
    EXPECT_EQ(QImage(other).size(), QSize(50, 40));
    {
        Thumbnail second;
        second.AddImage(save(QStringLiteral("c.png"), QSize(1600, 1200)), -1);
        QTest::keyClick(&second, Qt::Key_R);
        ASSERT_TRUE(becomes(QStringLiteral("c.png"), 't'));
        QTest::keyClick(&second, Qt::Key_R); // it goes meanwhile
    }
    strip.clearthumbnail(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(hidden().size(), 1) << "b.png can still be taken back";
}

TEST_F(AfterTheCapture, TheKeysComeBackToTheStripFromTheOfferToUndo)
{
    list({QStringLiteral("a.png")});
    QPushButton next(&strip); // which the toolkit would give them to
    next.show();
    strip.RemoveItem(0, true);
    auto* offer = strip.findChild<QWidget*>(QStringLiteral("undoBar"))->findChild<QPushButton*>();
    offer->setFocus();
    QTest::keyClick(offer, Qt::Key_Space);
    EXPECT_EQ(names(), QStringList{QStringLiteral("a.png")});
    EXPECT_TRUE(strip.hasFocus());
}

TEST_F(AfterTheCapture, TheBarStaysInTheStripWhereEntriesAreNarrow)
{
    strip.SetIconSize(60, 100);
    list({QStringLiteral("a.png")});
    hover(0);
    const auto* bar = strip.findChild<EntryBar*>();
    ASSERT_TRUE(bar->isVisible());
    ASSERT_GT(bar->width(), entries->visualItemRect(entries->item(0)).width());
    EXPECT_TRUE(entries->viewport()->rect().contains(bar->geometry()));
}

TEST_F(AfterTheCapture, TheBarBelongsToTheEntryUnderTheMouseOrTheKeys)
{
    list({QStringLiteral("a.png"), QStringLiteral("b.png")});
    QPixmap stock(20, 20);
    dir.write("text.rtf", "{\\rtf1}");
    strip.AddImage(stock, file(QStringLiteral("text.rtf")), -1);
    auto* bar = strip.findChild<EntryBar*>();
    const auto isOver = [&](int row) {
        return bar->isVisible() && entries->visualItemRect(entries->item(row)).contains(bar->geometry());
    };
    const auto isOffered = [&](const char* button) {
        const auto* found = bar->findChild<QPushButton*>(QLatin1String(button));
        return found->isVisible() && found->isEnabled();
    };
    key(Qt::Key_Home);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isOver(0); }));
    hover(1);
    EXPECT_TRUE(isOver(1));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(entries->viewport(), &leave);
    EXPECT_TRUE(isOver(0)) << "the one with the keys";
    hover(1);
    EXPECT_TRUE(isOver(1));
    EXPECT_FALSE(isOffered("entryUndo"));
    pressOnBar("entryTurnRight");
    EXPECT_TRUE(becomes(QStringLiteral("b.png"), 't'));
    EXPECT_EQ(redOf(file(QStringLiteral("a.png"))), 'l') << "the current one is not meant";
    EXPECT_TRUE(QTest::qWaitFor([&] { return isOffered("entryUndo"); }));
    pressOnBar("entryTurnLeft");
    pressOnBar("entryUndo");
    pressOnBar("entryUndo");
    EXPECT_TRUE(QTest::qWaitFor([&] { return hidden().isEmpty(); }));
    hover(2);
    EXPECT_TRUE(isOver(2) && isOffered("entryRename") && !isOffered("entryCrop") &&
                !isOffered("entryTurnLeft"));
    for (const auto* button : bar->findChildren<QPushButton*>())
        EXPECT_FALSE(button->accessibleName().isEmpty() || button->icon().isNull());
    key(Qt::Key_End);
    key(Qt::Key_R);
    rename("letter");
    EXPECT_EQ(bytes("letter.rtf"), "{\\rtf1}");
    key(Qt::Key_F2);
    QTest::keyClicks(name(), QStringLiteral("memo"));
    strip.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(bytes("memo.rtf"), "{\\rtf1}") << "a click elsewhere is no reason to lose the name";
}

TEST_F(AfterTheCapture, APageIsMadeUprightAndAStraightOneLeftAlone)
{
    QImage desk(800, 600, QImage::Format_RGB32);
    desk.fill(QColor(50, 52, 55));
    QPainter(&desk).fillRect(100, 150, 600, 300, QColor(238, 236, 230));
    ASSERT_TRUE(desk.save(file(QStringLiteral("page.png"))));
    desk.fill(Qt::white);
    ASSERT_TRUE(desk.save(file(QStringLiteral("plain.png"))));
    for (const char* name : {"page.png", "plain.png"})
        strip.AddImage(file(QLatin1String(name)), -1);
    entries->selectAll();
    key(Qt::Key_S);
    EXPECT_TRUE(says("plain.png is straight already"));
    const auto now = [&] { return QImage(file(QStringLiteral("page.png"))); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !now().isNull() && now().width() != 800; }));
    EXPECT_NEAR(now().width(), 600 - 30, 5) << "without its outermost pixels";
    EXPECT_NEAR(now().height(), 300 - 30, 5);
}

TEST_F(AfterTheCapture, APhotographIsShownAsTheCameraWasHeld)
{
    save(QStringLiteral("lying.jpg"));
    std::string turned = bytes("lying.jpg");
    turned.insert(2,
                  QByteArray::fromHex("ffe10022457869660000" // Exif
                                      "4d4d002a00000008"     // TIFF
                                      "0001011200030000000100060000"
                                      "00000000") // what was left is above
                      .toStdString());
    dir.write("turned.jpg", turned);
    strip.AddImage(file(QStringLiteral("turned.jpg")), -1);
    EXPECT_EQ(entries->item(0)->icon().actualSize(QSize(500, 500)), QSize(75, 100)) << "before it is read";
    const auto icon = [&] { return entries->item(0)->icon().pixmap(QSize(500, 500)).toImage(); };
    EXPECT_TRUE(QTest::qWaitFor([&] { // its room comes first, in the same shape
        const QImage shown = icon();
        return shown.size() == QSize(75, 100) && shown.pixelColor(60, 20).blue() < 60 &&
               shown.pixelColor(10, 80).blue() > 200;
    }));
    key(Qt::Key_C);
    auto* dialog = strip.findChild<CropDialog*>();
    ASSERT_TRUE(dialog);
    auto* accept = dialog->findChild<QPushButton*>(QStringLiteral("cropAccept"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return accept->isEnabled(); }));
    const auto* first = dialog->findChild<QWidget*>(QStringLiteral("corner0"));
    const QPoint across = dialog->findChild<QWidget*>(QStringLiteral("corner2"))->pos() - first->pos();
    EXPECT_LT(across.x(), across.y());
    dialog->reject();
    QImage banner(3000, 750, QImage::Format_RGB32); // larger than is shown
    banner.fill(Qt::gray);
    banner.save(file(QStringLiteral("banner.png")));
    CropDialog wide(file(QStringLiteral("banner.png")), &strip);
    wide.show();
    accept = wide.findChild<QPushButton*>(QStringLiteral("cropAccept"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return accept->isEnabled(); }));
    wide.findChild<QPushButton*>(QStringLiteral("cropWhole"))->click();
    const QPoint whole = wide.findChild<QWidget*>(QStringLiteral("corner2"))->pos() -
                         wide.findChild<QWidget*>(QStringLiteral("corner0"))->pos();
    EXPECT_NEAR(whole.x(), 4 * whole.y(), 6);
}

TEST_F(AfterTheCapture, ACropTakesWhatLiesBetweenTheCorners)
{
    list({QStringLiteral("a.png")});
    const auto dialog = [&] { return strip.findChild<CropDialog*>(); };
    for (const char* button : {"cropCancel", "cropAccept"}) {
        key(Qt::Key_C);
        ASSERT_NE(dialog(), nullptr);
        auto* accept = dialog()->findChild<QPushButton*>(QStringLiteral("cropAccept"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return accept->isEnabled(); })) << "the picture has been read";
        const QSize usual = dialog()->size();
        const auto lastAt = [&] { return dialog()->findChild<QWidget*>(QStringLiteral("corner2"))->pos(); };
        const QPoint usualPlace = lastAt();
        dialog()->resize(usual - QSize(150, 120));
        QCoreApplication::processEvents();
        EXPECT_NE(lastAt(), usualPlace) << "the corners stay on the picture";
        dialog()->resize(usual);
        QCoreApplication::processEvents();
        auto* view = dialog()->findChild<CropView*>();
        const auto corner = [&](int i) {
            return view->findChild<QWidget*>(QStringLiteral("corner%1").arg(i));
        };
        EXPECT_FALSE(corner(0)->accessibleName().isEmpty());
        const QPoint first = corner(0)->pos();
        const int left = corner(0)->x(), right = corner(1)->x();
        for (const int i : {0, 3}) { // to the middle, in steps of ten
            corner(i)->setFocus();
            for (int step = 0; step < (right - left) / 20; ++step)
                QTest::keyClick(corner(i), Qt::Key_Right, Qt::ShiftModifier);
        }
        for (const auto way : {Qt::Key_Left, Qt::Key_Right}) { // past the left ones, and back
            for (int step = 0; step < (right - left) * 3 / 40; ++step)
                QTest::keyClick(corner(1), way, Qt::ShiftModifier);
            EXPECT_EQ(accept->isEnabled(), way == Qt::Key_Right) << "sides that cross hold no page";
        }
        const QPoint grip = corner(0)->rect().center() + QPoint(6, -5); // wherever it is held
        QTest::mousePress(corner(0), Qt::LeftButton, Qt::NoModifier, grip);
        QMouseEvent beyond(
            QEvent::MouseMove, grip + QPoint(right, 0), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(corner(0), &beyond);
        EXPECT_FALSE(accept->isEnabled()) << "no page between these corners";
        QMouseEvent outside(QEvent::MouseMove,
                            grip + first - corner(0)->pos() - QPoint(90, 90),
                            Qt::NoButton,
                            Qt::LeftButton,
                            Qt::NoModifier);
        QCoreApplication::sendEvent(corner(0), &outside);
        EXPECT_EQ(corner(0)->pos(), first) << "no corner leaves the picture";
        const QPoint back((left + right) / 2 - corner(0)->x(), 0);
        QMouseEvent middle(QEvent::MouseMove, grip + back, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(corner(0), &middle);
        QTest::mouseRelease(corner(0), Qt::LeftButton);
        if (QLatin1String(button) == QLatin1String("cropCancel")) {
            EXPECT_NE(corner(0)->pos(), first);
            QTest::mouseClick(dialog()->findChild<QPushButton*>(QStringLiteral("cropWhole")), Qt::LeftButton);
            EXPECT_EQ(corner(0)->pos(), first) << "the whole picture again";
            EXPECT_EQ(corner(3)->x(), left);
        }
        EXPECT_EQ(QImage(file(QStringLiteral("a.png"))).width(), 64);
        QTest::mouseClick(dialog()->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog(); }));
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return QImage(file(QStringLiteral("a.png"))).width() != 64; }));
    const QImage cut(file(QStringLiteral("a.png")));
    EXPECT_NEAR(cut.width(), 32, 2);
    EXPECT_NEAR(cut.height(), 48, 2);
    EXPECT_EQ(cut.pixelColor(cut.width() / 2, 24), QColor(Qt::blue)) << "the right half";
}

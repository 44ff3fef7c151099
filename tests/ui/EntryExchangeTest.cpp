// Files that leave the strip for other programs, and come from them.
#include "AfterTheCapture.h"
#include "ThumbnailList.h"

#include <QAccessible>
#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace {

void drag(QWidget* over, const QList<QUrl>& urls, bool isDropped)
{
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QDragMoveEvent move({6, 6}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    for (QDragMoveEvent* event : {static_cast<QDragMoveEvent*>(&enter), &move}) {
        QCoreApplication::sendEvent(over, event);
        ASSERT_TRUE(event->isAccepted());
        EXPECT_EQ(event->dropAction(), Qt::CopyAction) << "the other program keeps its file";
    }
    QDropEvent event({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    if (isDropped)
        QCoreApplication::sendEvent(over, &event);
}

} // namespace

TEST_F(AfterTheCapture, FilesAreDraggedOutAsCopiesAndPagesAreNumbered)
{
    QStringList dragged;
    Qt::DropActions allowed = Qt::IgnoreAction;
    Dialogs::instance().drag = [&](QDrag& drag, Qt::DropActions actions) {
        for (const QUrl& url : drag.mimeData()->urls())
            dragged.append(url.fileName());
        allowed = actions;
        EXPECT_TRUE(dynamic_cast<ThumbnailList&>(*entries).isDragging());
    };
    list({QStringLiteral("a.png"), QStringLiteral("b b.png"), QStringLiteral("c.png")});
    const auto click = [&](int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QTest::mouseClick(entries->viewport(), Qt::LeftButton, keys, middleOf(row));
    };
    const auto moveBeside = [&](int row) {
        for (const int to : {-20, -60}) {
            const QPoint at = middleOf(row) + QPoint(to, 0);
            QMouseEvent move(QEvent::MouseMove,
                             at,
                             entries->viewport()->mapToGlobal(at),
                             Qt::NoButton,
                             Qt::LeftButton,
                             Qt::NoModifier);
            QApplication::sendEvent(entries->viewport(), &move);
        }
    };
    const auto dragFrom = [&](int row) {
        dragged.clear();
        QTest::mousePress(entries->viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(row));
        const auto held = [&] { // the press arrives when it is no beginning of a scroll
            moveBeside(row);
            return !dragged.isEmpty();
        };
        EXPECT_TRUE(QTest::qWaitFor(held));
        QTest::mouseRelease(
            entries->viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(row) - QPoint(60, 0));
        EXPECT_FALSE(dynamic_cast<ThumbnailList&>(*entries).isDragging());
        return dragged.join(u'|');
    };
    click(0);
    click(2, Qt::ControlModifier);
    EXPECT_EQ(entries->selectedItems().size(), 2);
    EXPECT_EQ(dragFrom(2), QStringLiteral("a.png|c.png"));
    EXPECT_EQ(allowed, Qt::CopyAction);
    click(0);
    click(2, Qt::ShiftModifier);
    EXPECT_EQ(dragFrom(0), QStringLiteral("a.png|b b.png|c.png"));
    click(2);
    EXPECT_EQ(dragFrom(1), QStringLiteral("b b.png")) << "one that is not selected goes alone";
    EXPECT_EQ(strip.Count(), 3);

    strip.becomePageList();
    const auto spoken = [&](int row) {
        return QAccessible::queryAccessibleInterface(entries)->child(row)->text(QAccessible::Name);
    };
    EXPECT_EQ(spoken(0), QStringLiteral("Page 1: a.png"));
    entries->setCurrentRow(2);
    strip.onMoveUp(); // c.png
    EXPECT_EQ(spoken(1), QStringLiteral("Page 2: c.png"));
    dragged.clear();
    entries->setDragEnabled(false); // whose own drag would wait for the mouse
    QTest::mousePress(entries->viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(0));
    moveBeside(0);
    QTest::mouseRelease(entries->viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(0));
    EXPECT_TRUE(dragged.isEmpty()) << "a page is moved in its list and is no file for others";
    const auto look = [&](int row) {
        return entries->viewport()->grab(entries->visualItemRect(entries->item(row))).toImage();
    };
    entries->clearSelection();
    entries->setCurrentRow(-1);
    EXPECT_NE(look(0).copy(0, 0, 40, 40), look(2).copy(0, 0, 40, 40)) << "only the numbers tell them apart";
}

TEST_F(AfterTheCapture, PicturesOfOtherProgramsAreTakenAndOthersSaid)
{
    for (int pages = 0; pages < 2; ++pages) {
        dir.write("notes.txt", "no picture");
        const QList<QUrl> urls{
            QUrl::fromLocalFile(save(QStringLiteral("ä 1.png"))),
            QUrl::fromLocalFile(file(QStringLiteral("notes.txt"))),
            QUrl(QStringLiteral("http://localhost/x.png")),
            QUrl::fromLocalFile(file(QStringLiteral("an offer of the printing office.txt")))};
        QWidget* const over = pages ? entries->viewport() : static_cast<QWidget*>(&strip);
        drag(over, urls, false);
        EXPECT_TRUE(names().isEmpty()) << "it may be carried on";
        drag(over, urls, true);
        EXPECT_EQ(names(), QStringList{QStringLiteral("ä 1.png")});
        EXPECT_TRUE(said().contains(QStringLiteral("notes.txt, x.png, an offer of…g office.txt")))
            << qPrintable(said());
        EXPECT_TRUE(QFile::exists(file(QStringLiteral("notes.txt"))));
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent moved({5, 5}, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        strip.clearthumbnail(false);
        QCoreApplication::sendEvent(&strip, &moved);
        EXPECT_FALSE(moved.isAccepted()) << "the other program would delete what it believes moved";
        strip.becomePageList();
    }
}

#include "Command.h"
#include "ThumbnailStrip.h"

#include "Settings.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QHelpEvent>
#include <QPixmap>
#include <QPrinter>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QToolTip>

#include <algorithm>

namespace {

/// Of the first page, in points; empty when the file holds none.
QSizeF pageSize(const QString& pdf)
{
    QFile file(pdf);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    const QString text = QString::fromLatin1(bytes.constData(), bytes.size()); // zeros and all
    const QRegularExpression box(QStringLiteral("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)"));
    const QRegularExpressionMatch match = box.match(text);
    return QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble());
}

} // namespace

TEST_F(ThumbnailStrip, ListsAFileOnceWithItsPictureAndName)
{
    QSignalSpy updates(&strip, &Thumbnail::updateui);
    const QString path = save("Page.png", Qt::green, QSize(1600, 1200));
    strip.AddImage(path, -1);
    strip.AddImage(path, -1);
    QPixmap picture(10, 10);
    strip.AddImage(picture, path.toUpper(), 0);
    ASSERT_EQ(strip.Count(), 1);
    EXPECT_EQ(updates.count(), 1);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("Page.png"));
    EXPECT_EQ(strip.GetIndex(path.toUpper()), 0);
    EXPECT_EQ(strip.GetIndex(path + QLatin1Char('x')), -1);
    EXPECT_EQ(list->item(0)->icon().actualSize(QSize(500, 500)), QSize(133, 100)) << "a blank of its shape";
    EXPECT_TRUE(turns(0, Qt::green));
    EXPECT_EQ(list->item(0)->icon().actualSize(QSize(500, 500)), QSize(133, 100)) << "4:3 in 180 x 100";

    strip.AddImage(picture, QStringLiteral("C:\\scans\\page 1.pdf"), -1);
    strip.AddImage(picture, QStringLiteral("/scans/odd\\name.pdf"), -1);
    EXPECT_EQ(list->item(1)->text(), QStringLiteral("page 1.pdf"));
    EXPECT_EQ(list->item(2)->text(), QStringLiteral("odd\\name.pdf"));
}

TEST_F(ThumbnailStrip, ANameThatLooksLikeMarkupIsShownAsItIs)
{
    const auto read = [](QWidget* widget) { // as a screen reader does: what is shown, without markup
        return widget ? QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name) : QString();
    };
    strip.AddImage(file("<b>none.png"), -1);
    const auto* bar = strip.findChild<QWidget*>(QStringLiteral("noticeBar"));
    EXPECT_TRUE(read(bar->findChild<QLabel*>()).endsWith(QLatin1String(" <b>none.png")));

    const QString path = save("<i>page.png");
    strip.AddImage(path, -1);
    const QPoint middle = list->visualItemRect(list->item(0)).center();
    QHelpEvent rest(QEvent::ToolTip, middle, list->viewport()->mapToGlobal(middle));
    QCoreApplication::sendEvent(list->viewport(), &rest);
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto tip = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && window->windowType() == Qt::ToolTip;
    });
    EXPECT_EQ(read(tip == windows.end() ? nullptr : *tip), path);
    QToolTip::hideText();
}

TEST_F(ThumbnailStrip, InsertsWhereItIsTold)
{
    add("a.png b.png");
    list->selectAll();
    strip.AddImage(save("first.png"), 0);
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_EQ(list->selectedItems().size(), 1);
    strip.AddImage(save("end.png"), 3); // the count itself still is a place
    strip.AddImage(save("beyond.png"), 99);
    EXPECT_EQ(list->currentRow(), 4);
    strip.AddImage(save("second.png"), 1);
    EXPECT_EQ(list->currentRow(), 1);
    EXPECT_EQ(names(strip), words("first.png second.png a.png b.png end.png beyond.png"));
}

TEST_F(ThumbnailStrip, RefusesWhatIsNoPicture)
{
    dir.write("text.jpg", "no picture at all");
    dir.write("empty.png", "");
    strip.AddImage(file("text.jpg"), -1);
    strip.AddImage(file("empty.png"), -1);
    strip.AddImage(file("missing.bmp"), -1);
    QPixmap none;
    strip.AddImage(none, file("x.pdf"), -1);
    EXPECT_EQ(strip.Count(), 0);
    EXPECT_TRUE(said().endsWith(QStringLiteral("text.jpg, empty.png, missing.bmp"))) << qPrintable(said());
    save("cut.png", Qt::red, QSize(400, 300));
    ASSERT_TRUE(QFile::resize(file("cut.png"), 100)); // its size is known, and no more
    strip.AddImage(file("cut.png"), -1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 0; })) << "broken behind its header";
    EXPECT_TRUE(said().endsWith(QStringLiteral("missing.bmp and 1 more")));
    QPixmap stock(20, 20);
    dir.write("notes.rtf", "{\\rtf1}");
    strip.AddImage(stock, file("notes.rtf"), -1);
    strip.onPrint(); // something else is said
    strip.AddImage(file("empty.png"), -1);
    EXPECT_TRUE(said().endsWith(QStringLiteral(": empty.png"))) << qPrintable(said());
}

TEST_F(ThumbnailStrip, TheMenuFollowsTheState)
{
    const QString none = QStringLiteral("Open Directory,-,Add Image");
    const QString some = QStringLiteral("Open,Open Directory,-,Add Image,Delete,Clear,-");
    const auto joined = [this] { return menu().join(QLatin1Char(',')); };
    EXPECT_EQ(joined(), none);
    add("a.png");
    EXPECT_EQ(joined(), some);
    add("b.png c.png");
    EXPECT_EQ(joined(), some + QStringLiteral(",Move up"));
    list->setCurrentRow(1);
    EXPECT_EQ(joined(), some + QStringLiteral(",Move up,Move down"));
    list->setCurrentRow(0);
    EXPECT_EQ(joined(), some + QStringLiteral(",Move down"));
    list->clearSelection();
    EXPECT_EQ(joined(), none + QStringLiteral(",Clear"));
}

TEST_F(ThumbnailStrip, MovesAnEntryStepByStepAndKeepsItFromTheDeleteKey)
{
    add("a.png b.png c.png");
    choose("Move up");
    EXPECT_EQ(names(strip), words("a.png c.png b.png"));
    EXPECT_EQ(list->currentRow(), 1);
    choose("Move down");
    EXPECT_EQ(names(strip), words("a.png b.png c.png"));
    strip.onMoveDown(); // the last one stays
    EXPECT_EQ(list->currentRow(), 2);
    list->setCurrentRow(0);
    strip.onMoveUp();
    EXPECT_EQ(names(strip), words("a.png b.png c.png"));
    EXPECT_TRUE(turns(2, Qt::red)) << "an entry keeps its picture";

    QTest::keyClick(&strip, Qt::Key_Delete);
    EXPECT_TRUE(strip.Count() == 3 && onDisk("a.png"));
}

TEST_F(ThumbnailStrip, OpensFilesAndFoldersAndAddsChosenOnes)
{
    settings::setSavePath(settings, file("scans"));
    strip.onOpen();
    strip.onOpenDir();
    add("a.png b.png");
    choose("Open");
    choose("Open Directory");
    QTest::keyClick(&strip, Qt::Key_Home);
    QTest::keyClick(&strip, Qt::Key_Return);
    EXPECT_EQ(answers.opened,
              (QStringList{file("scans"), file("b.png"), QString::fromStdString(dir.path()), file("a.png")}));
    strip.onItemDoubleClicked(nullptr);
    EXPECT_EQ(said(), QString());
    QFile::remove(file("a.png"));
    strip.onItemDoubleClicked(list->item(0));
    EXPECT_EQ(answers.opened.size(), 4);
    EXPECT_TRUE(said().startsWith(QStringLiteral("a.png")));
    EXPECT_EQ(names(strip), words("b.png"));
    const QString gone = said();
    strip.onOpen(); // which has nothing to say
    EXPECT_EQ(said(), gone) << "wiped before it was read";
    Dialogs::instance().openUrl = [](const QUrl&) { return false; };
    strip.onOpen();
    EXPECT_TRUE(said().contains(QStringLiteral("b.png"))) << qPrintable(said());
    strip.onOpenDir();
    EXPECT_TRUE(said().contains(QString::fromStdString(dir.path()))) << qPrintable(said());

    answers.chosenFiles = QStringList{save("a.png"), file("gone.png"), save("c.png")};
    choose("Add Image");
    EXPECT_EQ(names(strip), words("b.png a.png c.png"));
}

TEST_F(ThumbnailStrip, PrintsThePictureOnAPageOfItsOrientationOrSaysWhyNot)
{
    strip.AddImage(save("wide.png", Qt::red, QSize(400, 200)), -1);
    strip.onPrint(); // and the dialog cancelled
    EXPECT_EQ(said(), QString());
    strip.RemoveItem(0, false);
    QString pdf = file("out.pdf");
    Dialogs::instance().choosePrinter = [&](QPrinter& printer, QWidget*) {
        printer.setOutputFileName(pdf);
        return true;
    };
    strip.onPrint(); // nothing to print
    strip.AddImage(save("wide.png", Qt::red, QSize(400, 200)), -1);
    strip.onPrint();
    const QSizeF page = pageSize(pdf);
    EXPECT_GT(page.width(), page.height());
    tools::run("pdftoppm -r 20 -png -singlefile '" + pdf.toStdString() + "' '" + dir.file("seen") + "'");
    const QImage seen(file("seen.png"));
    const auto whiteFrom = [&](QPoint at, QPoint step) {
        int count = 0;
        for (; seen.valid(at) && seen.pixelColor(at).green() > 128; at += step)
            ++count;
        return count;
    };
    const int above = whiteFrom({seen.width() / 2, 0}, {0, 1});
    EXPECT_GT(above, 10) << "twice as wide as high: the sheet has room above and below";
    EXPECT_NEAR(above, whiteFrom({seen.width() / 2, seen.height() - 1}, {0, -1}), 2);
    const int left = whiteFrom({0, seen.height() / 2}, {1, 0});
    EXPECT_NEAR(left, whiteFrom({seen.width() - 1, seen.height() / 2}, {-1, 0}), 2);
    EXPECT_LT(left, 10) << "as wide as the printer can";

    pdf = file("no such folder/out.pdf");
    strip.onPrint();
    const QString failed = said();
    EXPECT_FALSE(failed.isEmpty());
    QPixmap stock(20, 20);
    dir.write("notes.rtf", "{\\rtf1}");
    strip.AddImage(stock, file("notes.rtf"), -1);
    strip.onPrint();
    EXPECT_NE(said(), failed);
    EXPECT_EQ(answers.messages, QStringList());
}

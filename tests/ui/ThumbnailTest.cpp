#include "Thumbnail.h"
#include "AnsweredDialogs.h"
#include "FreshSettings.h"
#include "LeftOverFiles.h"
#include "Settings.h"
#include "TempDir.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPixmap>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <functional>

namespace {

QStringList names(const Thumbnail& strip)
{
    QStringList result;
    for (const QString& path : strip.GetFilePaths())
        result.append(path.section(QLatin1Char('/'), -1));
    return result;
}

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

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class ThumbnailStrip : public FreshSettings
{
protected:
    ThumbnailStrip() : list(strip.findChild<QListWidget*>()) { strip.show(); }

    QString file(const char* name) const { return QString::fromStdString(dir.file(name)); }

    /// A picture of one colour on the disk, written in one step as captures are.
    QString save(const char* name, const QColor& colour = Qt::red, QSize size = QSize(40, 30)) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        const QString part = file("part.png");
        EXPECT_TRUE(image.save(part, "PNG"));
        EXPECT_EQ(std::rename(part.toLocal8Bit().constData(), file(name).toLocal8Bit().constData()), 0);
        return file(name);
    }
    void add(const char* fileNames)
    {
        for (const QString& name : words(fileNames))
            strip.AddImage(save(name.toLatin1().constData()), -1);
    }
    /// Captions of the context menu, "-" for a separator.
    QStringList menu()
    {
        strip.onPopupCustomMenu(QPoint());
        auto* shown = strip.findChild<QMenu*>();
        EXPECT_TRUE(shown->isVisible());
        QStringList captions;
        for (const QAction* action : shown->actions())
            captions.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        shown->close();
        return captions;
    }
    void choose(
        const char* caption, const std::function<void()>& whileOpen = [] {})
    {
        menu();
        whileOpen();
        for (QAction* action : strip.findChild<QMenu*>()->actions()) {
            if (action->text() == QLatin1String(caption))
                return action->trigger();
        }
        ADD_FAILURE() << "the menu has no " << caption;
    }
    QColor colourOf(int row) const
    {
        const QListWidgetItem* entry = list->item(row);
        const QImage picture = entry ? entry->icon().pixmap(180, 100).toImage() : QImage();
        return picture.isNull() ? QColor() : picture.pixelColor(picture.rect().center());
    }
    bool turns(int row, const QColor& colour) const
    {
        return QTest::qWaitFor([&] { return colourOf(row) == colour; });
    }
    /// What the user reads below the entries.
    QString said(const char* bar = "noticeBar") const
    {
        const auto* shown = strip.findChild<QWidget*>(QLatin1String(bar));
        return shown && shown->isVisible() ? shown->findChild<QLabel*>()->text() : QString();
    }
    QString offer() const { return said("undoBar"); }
    void undo() const
    {
        auto* bar = strip.findChild<QWidget*>(QStringLiteral("undoBar"));
        QTest::mouseClick(bar->findChild<QPushButton*>(), Qt::LeftButton);
    }
    bool onDisk(const char* name) const { return QFile::exists(file(name)); }
    /// Of deleted files that can still be brought back.
    QStringList hidden() const
    {
        return QDir(QString::fromStdString(dir.path()))
            .entryList({QStringLiteral(".lumro-*.tmp")}, QDir::Files | QDir::Hidden);
    }

    TempDir dir;
    AnsweredDialogs answers;
    Thumbnail strip;
    QListWidget* list;
};

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
    ASSERT_TRUE(QFile::resize(file("cut.png"), 60)); // no more than the header
    strip.AddImage(file("cut.png"), -1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 0; })) << "broken behind its header";
    EXPECT_TRUE(said().endsWith(QStringLiteral("missing.bmp and 1 more")));
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
    list->setCurrentRow(0);
    strip.onMoveUp();
    EXPECT_EQ(names(strip), words("a.png b.png c.png"));
    EXPECT_TRUE(turns(2, Qt::red)) << "an entry keeps its picture";

    QTest::keyClick(&strip, Qt::Key_Delete);
    EXPECT_TRUE(strip.Count() == 3 && onDisk("a.png"));
}

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
    timer->start(1); // the same end, sooner
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
    list->setCurrentRow(1);
    choose("Move up");
    EXPECT_EQ(names(strip), words("c.png b.png"));
    choose("Clear");
    EXPECT_EQ(strip.Count(), 0);
    EXPECT_TRUE(onDisk("a.png") && onDisk("b.png") && onDisk("c.png") && onDisk("d.png"));
}

TEST_F(ThumbnailStrip, FollowsItsFilesAndGoesWhilePicturesAreBeingMade)
{
    add("a.png b.png");
    for (const QColor colour : {Qt::blue, Qt::green}) { // twice: the watch must survive a replacement
        save("a.png", colour);
        EXPECT_TRUE(turns(0, colour));
    }
    EXPECT_EQ(strip.Count(), 2);
    QFile::remove(file("a.png"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 1; }));
    EXPECT_EQ(names(strip), words("b.png"));
    strip.onFileChanged(file("a.png")); // a late notice about an entry that has gone
    EXPECT_EQ(strip.Count(), 1);

    const QString large = save("large.png", Qt::red, QSize(3000, 2000));
    for (int i = 0; i < 5; ++i) {
        Thumbnail other;
        other.AddImage(large, -1);
        for (const char* name : {"a.png", "b.png"})
            other.AddImage(save(name), -1);
        if (i % 2)
            other.clearthumbnail(false);
    }
    QCoreApplication::processEvents();
}

TEST_F(ThumbnailStrip, AFileThatIsWrittenInPlaceStaysAndComesRightAgain)
{
    strip.AddImage(save("a.png", Qt::red, QSize(400, 300)), -1);
    add("b.png");
    ASSERT_TRUE(turns(0, Qt::red));
    QFile whole(save("whole.png", Qt::blue, QSize(400, 300)));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    QFile written(file("a.png"));
    int step = 0;
    for (const int half : {0, 60, bytes.size() / 2}) {
        ASSERT_TRUE(written.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered));
        written.write(bytes.left(half));
        const QColor mark(40 + 40 * step++, 0, 200);
        save("b.png", mark); // pictures are made in turn: when it is seen, the half one has been tried
        ASSERT_TRUE(turns(strip.GetIndex(file("b.png")), mark));
        ASSERT_EQ(names(strip), words("a.png b.png")) << half;
        written.write(bytes.mid(half));
        written.close();
        EXPECT_TRUE(turns(0, Qt::blue)) << half;
    }
}

TEST_F(ThumbnailStrip, AnUnreadablePictureIsTriedUntilItCanBeRead)
{
    for (const char* folder : {"one", "two"})
        QDir().mkdir(file(folder));
    ASSERT_TRUE(QFile::link(file("one"), file("now")));
    save("one/a.png", Qt::red, QSize(400, 300));
    save("two/a.png", Qt::green);
    strip.AddImage(file("now/a.png"), -1);
    ASSERT_TRUE(turns(0, Qt::red));
    ASSERT_TRUE(QFile::resize(file("now/a.png"), 60));
    add("b.png");
    ASSERT_TRUE(turns(1, Qt::red)) << "the broken one has been tried";
    QFile::remove(file("now"));
    ASSERT_TRUE(QFile::link(file("two"), file("now"))); // no notice comes of that
    EXPECT_TRUE(turns(0, Qt::green));
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

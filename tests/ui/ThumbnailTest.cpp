#include "Thumbnail.h"
#include "AnsweredDialogs.h"
#include "FreshSettings.h"
#include "Settings.h"
#include "TempDir.h"

#include <QFile>
#include <QImage>
#include <QListWidget>
#include <QMenu>
#include <QPixmap>
#include <QPrinter>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <cstdio>

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
    ThumbnailStrip() : list(strip.findChild<QListWidget*>()) {}

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
    void choose(const char* caption)
    {
        menu();
        for (QAction* action : strip.findChild<QMenu*>()->actions()) {
            if (action->text() == QLatin1String(caption))
                return action->trigger();
        }
        ADD_FAILURE() << "the menu has no " << caption;
    }
    QColor colourOf(int row) const
    {
        const QImage picture = list->item(row)->icon().pixmap(180, 100).toImage();
        return picture.pixelColor(picture.rect().center());
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return colourOf(0) == QColor(Qt::green); }));
    EXPECT_EQ(list->item(0)->icon().actualSize(QSize(500, 500)), QSize(133, 100)) << "4:3 in 180 x 100";
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
    save("cut.png", Qt::red, QSize(400, 300));
    ASSERT_TRUE(QFile::resize(file("cut.png"), 60)); // no more than the header
    strip.AddImage(file("cut.png"), -1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 0; })) << "broken behind its header";
}

TEST_F(ThumbnailStrip, NamesAPathOfAnotherSystemByItsLastPart)
{
    QPixmap stock(20, 20);
    strip.AddImage(stock, QStringLiteral("C:\\scans\\page 1.pdf"), -1);
    strip.AddImage(stock, QStringLiteral("/scans/odd\\name.pdf"), -1);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("page 1.pdf"));
    EXPECT_EQ(list->item(1)->text(), QStringLiteral("odd\\name.pdf"));
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

TEST_F(ThumbnailStrip, MovesAnEntryStepByStep)
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return colourOf(2) == QColor(Qt::red); }))
        << "an entry keeps its picture";
}

TEST_F(ThumbnailStrip, DeletesTheSelectedFilesOnly)
{
    add("a.png b.png c.png");
    list->item(0)->setSelected(true); // beside the current last one
    choose("Delete");
    EXPECT_EQ(names(strip), words("b.png"));
    EXPECT_FALSE(QFile::exists(file("a.png")));
    EXPECT_TRUE(QFile::exists(file("b.png")));
    EXPECT_FALSE(QFile::exists(file("c.png")));
}

TEST_F(ThumbnailStrip, ClearsWithOrWithoutTheFiles)
{
    add("a.png b.png");
    strip.RemoveItem(5, true);
    strip.RemoveItem(0, false);
    strip.onClear(false);
    EXPECT_EQ(strip.Count(), 0);
    EXPECT_TRUE(QFile::exists(file("a.png")) && QFile::exists(file("b.png")));
    add("a.png b.png");
    choose("Clear");
    EXPECT_EQ(strip.Count(), 0);
    EXPECT_FALSE(QFile::exists(file("a.png")) || QFile::exists(file("b.png")));
}

TEST_F(ThumbnailStrip, APageListKeepsTheFiles)
{
    strip.becomePageList();
    add("a.png b.png c.png d.png");
    EXPECT_FALSE(list->item(0)->flags() & Qt::ItemIsDropEnabled) << "a drop would replace that page";
    choose("Delete");
    strip.show();
    QTest::keyClick(&strip, Qt::Key_Home);
    QTest::keyClick(&strip, Qt::Key_Delete);
    EXPECT_EQ(names(strip), words("b.png c.png"));
    EXPECT_TRUE(list->item(0)->isSelected()) << "the key can be pressed again";
    list->setCurrentRow(1);
    choose("Move up");
    EXPECT_EQ(names(strip), words("c.png b.png"));
    choose("Clear");
    EXPECT_EQ(strip.Count(), 0);
    for (const char* name : {"a.png", "b.png", "c.png", "d.png"})
        EXPECT_TRUE(QFile::exists(file(name))) << name;
}

TEST_F(ThumbnailStrip, TheDeleteKeyDeletesNoProducedFile)
{
    add("a.png");
    strip.show();
    QTest::keyClick(&strip, Qt::Key_Delete);
    EXPECT_EQ(strip.Count(), 1);
    EXPECT_TRUE(QFile::exists(file("a.png")));
}

TEST_F(ThumbnailStrip, GoesWhilePicturesAreBeingMade)
{
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

TEST_F(ThumbnailStrip, FollowsItsFiles)
{
    add("a.png b.png");
    for (const QColor colour : {Qt::blue, Qt::green}) { // twice: the watch must survive a replacement
        save("a.png", colour);
        EXPECT_TRUE(QTest::qWaitFor([&] { return colourOf(0) == colour; }));
    }
    EXPECT_EQ(strip.Count(), 2);
    QFile::remove(file("a.png"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.Count() == 1; }));
    EXPECT_EQ(names(strip), words("b.png"));
    strip.onFileChanged(file("a.png")); // a late notice about an entry that has gone
    EXPECT_EQ(strip.Count(), 1);
}

TEST_F(ThumbnailStrip, OpensFilesAndFolders)
{
    settings::setSavePath(settings, file("scans"));
    strip.onOpen();
    strip.onOpenDir();
    add("a.png b.png");
    choose("Open");
    choose("Open Directory");
    strip.show();
    QTest::keyClick(&strip, Qt::Key_Home);
    QTest::keyClick(&strip, Qt::Key_Return);
    EXPECT_EQ(answers.opened,
              (QStringList{file("scans"), file("b.png"), QString::fromStdString(dir.path()), file("a.png")}));
    strip.onItemDoubleClicked(nullptr);
    QFile::remove(file("a.png"));
    strip.onItemDoubleClicked(list->item(0));
    EXPECT_EQ(answers.opened.size(), 4);
}

TEST_F(ThumbnailStrip, AddsChosenFiles)
{
    answers.chosenFiles = QStringList{save("a.png"), file("gone.png"), save("b.png")};
    choose("Add Image");
    EXPECT_EQ(names(strip), words("a.png b.png"));
}

TEST_F(ThumbnailStrip, PrintsThePictureOnAPageOfItsOrientation)
{
    const QString pdf = file("out.pdf");
    Dialogs::instance().choosePrinter = [&](QPrinter& printer, QWidget*) {
        printer.setOutputFileName(pdf);
        return true;
    };
    strip.onPrint(); // nothing to print
    strip.AddImage(save("wide.png", Qt::red, QSize(400, 200)), -1);
    strip.onPrint();
    EXPECT_EQ(answers.messages, QStringList());
    const QSizeF page = pageSize(pdf);
    EXPECT_GT(page.width(), page.height());
}

TEST_F(ThumbnailStrip, SaysWhenPrintingFails)
{
    Dialogs::instance().choosePrinter = [&](QPrinter& printer, QWidget*) {
        printer.setOutputFileName(file("no such folder/out.pdf"));
        return true;
    };
    add("a.png");
    strip.onPrint();
    EXPECT_EQ(answers.messages.size(), 1);
    QPixmap stock(20, 20);
    dir.write("notes.rtf", "{\\rtf1}");
    strip.AddImage(stock, file("notes.rtf"), -1);
    strip.onPrint();
    EXPECT_EQ(answers.messages.size(), 2);
}

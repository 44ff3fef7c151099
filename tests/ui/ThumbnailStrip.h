#pragma once

#include "AnsweredDialogs.h"
#include "FreshSettings.h"
#include "TempDir.h"
#include "Thumbnail.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include <cstdio>
#include <functional>

inline QStringList names(const Thumbnail& strip)
{
    QStringList result;
    for (const QString& path : strip.GetFilePaths())
        result.append(path.section(QLatin1Char('/'), -1));
    return result;
}

inline QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// A shown strip and a folder for its files.
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

#pragma once

#include "AnsweredDialogs.h"
#include "FreshSettings.h"
#include "TempDir.h"
#include "Thumbnail.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QTest>

/// A shown strip with the keys, and a folder for its files.
class AfterTheCapture : public FreshSettings
{
protected:
    AfterTheCapture()
    {
        strip.resize(220, 700);
        strip.show();
        strip.activateWindow();
        strip.setFocus();
        EXPECT_TRUE(QTest::qWaitFor([&] { return strip.hasFocus(); }));
    }

    QString file(const QString& name) const { return QString::fromStdString(dir.file(name.toStdString())); }
    std::string bytes(const char* name) const { return dir.content(name); }
    /// Red on the left, blue on the right.
    QString save(const QString& name, QSize size = QSize(64, 48)) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
        EXPECT_TRUE(image.save(file(name)));
        return file(name);
    }
    void list(const QStringList& names)
    {
        for (const QString& name : names)
            strip.AddImage(save(name), -1);
    }
    QStringList names() const
    {
        QStringList result;
        for (const QString& path : strip.GetFilePaths())
            result.append(QFileInfo(path).fileName());
        return result;
    }
    /// Where the red half lies once the picture stands like that: l, r, t, b; ? otherwise.
    static char redOf(const QString& path)
    {
        const QImage now(path);
        if (now.isNull())
            return '?';
        const auto isRed = [&](double x, double y) {
            return now.pixelColor(int(x * now.width()), int(y * now.height())).red() > 128;
        };
        const bool a = isRed(0.2, 0.2), b = isRed(0.8, 0.2), c = isRed(0.2, 0.8);
        return a && b ? 't' : a && c ? 'l' : b ? 'r' : c ? 'b' : '?';
    }
    bool becomes(const QString& name, char red) const
    {
        return QTest::qWaitFor([&] { return redOf(file(name)) == red; });
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&strip, key, modifiers);
    }
    void undo() { key(Qt::Key_Z, Qt::ControlModifier); }
    QString said() const
    {
        const auto* bar = strip.findChild<QWidget*>(QStringLiteral("noticeBar"));
        return bar->isVisible() ? bar->findChild<QLabel*>()->text() : QString();
    }
    bool says(const char* part) const
    {
        return QTest::qWaitFor([&] { return said().contains(QLatin1String(part)); });
    }
    QStringList hidden() const
    {
        return QDir(QString::fromStdString(dir.path()))
            .entryList({QStringLiteral(".lumro-*.tmp")}, QDir::Files | QDir::Hidden);
    }
    QLineEdit* name() const { return strip.findChild<QLineEdit*>(QStringLiteral("entryName")); }
    void rename(const char* text)
    {
        key(Qt::Key_F2);
        ASSERT_TRUE(name()->isVisible());
        QTest::keyClicks(name(), QLatin1String(text));
        QTest::keyClick(name(), Qt::Key_Return);
    }
    QPoint middleOf(int row) const { return entries->visualItemRect(entries->item(row)).center(); }
    void hover(int row) const
    {
        QMouseEvent move(QEvent::MouseMove, middleOf(row), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(entries->viewport(), &move);
    }
    void pressOnBar(const char* button) const
    {
        QTest::mouseClick(strip.findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
    }

    TempDir dir;
    AnsweredDialogs answers;
    Thumbnail strip;
    QListWidget* entries = strip.findChild<QListWidget*>();
};

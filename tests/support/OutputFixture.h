#pragma once

#include "FakeDesk.h"
#include "FreshSettings.h"
#include "Settings.h"
#include "TempDir.h"

#include <QDir>
#include <QPainter>

/// What is made of captures: a desk that delivers them, and a folder for what comes of it, which is the one
/// of the settings at first.
class OutputTest : public FreshSettings
{
protected:
    OutputTest() { settings::setSavePath(settings, path()); }

    QString path(const char* name) const { return QString::fromStdString(folder.file(name)); }
    QString path() const { return QString::fromStdString(folder.path()); }
    QString save(const char* name, const QImage& image, const char* format = nullptr, int quality = -1) const
    {
        EXPECT_TRUE(image.save(path(name), format, quality));
        return path(name);
    }
    QString save(const char* name,
                 const QColor& colour = Qt::red,
                 const char* format = nullptr,
                 QSize size = {40, 30}) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        return save(name, image, format);
    }
    /// A page with a line of print and this one below it.
    static QImage printed(const QString& text)
    {
        QImage page(900, 300, QImage::Format_RGB32);
        page.fill(Qt::white);
        QPainter painter(&page);
        QFont font(QStringLiteral("DejaVu Serif"));
        font.setPixelSize(36);
        painter.setFont(font);
        painter.drawText(80, 100, QStringLiteral("The harbour office is closed on"));
        painter.drawText(80, 160, text);
        return page;
    }
    /// Hidden ones too.
    QStringList files(const char* pattern = "*") const
    {
        return QDir(path()).entryList({QLatin1String(pattern)}, QDir::Files | QDir::Hidden);
    }

    const TempDir folder;
    FakeDesk desk;
};

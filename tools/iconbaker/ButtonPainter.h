#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// Draws the pictures. Needs a QGuiApplication for its fonts; sizes in logical pixels, results in
/// size x scale device pixels. Throws std::runtime_error when a drawing or a font is missing.
class ButtonPainter
{
public:
    explicit ButtonPainter(QString iconFolder);

    QImage plain(const QString& source, const QSize& size, int iconHeight, int scale) const;
    QImage captioned(const QString& source, const QString& caption, const QString& language, int scale) const;

private:
    QString iconFolder_;
};

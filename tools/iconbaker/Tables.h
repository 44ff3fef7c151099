#pragma once

#include <QSize>
#include <QString>
#include <QVector>

/// What shall be made, as the two tables beside the icons say it. All sizes in logical pixels.

/// A picture without text, for the folder "common" or, with the folder "languages", for every language.
struct PlainImage
{
    QString folder;
    QString name;   // of the PNG
    QString source; // of the SVG
    QSize size;     // of the PNG
    int iconHeight; // the drawing's height, centred in the PNG
};

/// A function button: an icon with a caption in each language.
struct CaptionedImage
{
    QString name;
    QString source;
    QVector<QString> captions; // in the order of Captions::languages
};

struct Captions
{
    QVector<QString> languages; // folder codes, from the table's head
    QVector<CaptionedImage> buttons;
};

/// Both throw std::runtime_error with file and line when a row is not understood.
QVector<PlainImage> readImages(const QString& path);
Captions readCaptions(const QString& path);

#pragma once

#include "Sheet.h"

#include <QImage>
#include <QStringList>

#include <vector>

/// The flat pages, each drawn as it would leave a printer. All reentrant.
namespace deskpictures {

struct FlatPage
{
    QImage image; ///< RGBA, premultiplied; transparent where there is no paper
    double widthMm = 0;
    double heightMm = 0;
};

/// A symbol of the page of codes: where it lies on the page, and what a reader must find in it.
struct CodeTruth
{
    QString format;
    QString text;
    QRectF placeMm;
};

FlatPage drawLetter();
FlatPage drawForm();
FlatPage drawReceipt();
FlatPage drawCardFront();
FlatPage drawCardBack();
FlatPage drawRedSeal();
FlatPage drawBlueSeal();
FlatPage drawEnglishText();
FlatPage drawChineseText();
FlatPage drawRussianText();
/// @param codes  receives one entry a symbol
FlatPage drawCodes(std::vector<CodeTruth>& codes);
FlatPage drawBookLeft();
FlatPage drawBookRight();
/// Head and shoulders before a plain wall, as the card carries them and the second camera sees them; wider
/// pictures show more wall. @param headRoom  height of the picture as a multiple of the portrait's (1 on the
/// card)
QImage drawPortrait(QSize px, double headRoom);

/// The words of a page, one string a paragraph, as they stand in the file that the truth is copied from.
/// @param name  file name without its ending, such as "english"
QStringList pageText(const QString& name);

FlatPage finish(Sheet& sheet);

} // namespace deskpictures

#include "Pages.h"

namespace deskpictures {
namespace {

const QColor bookPaper(247, 243, 232);

// Inner and outer margins differ, as in every book that is sewn.
struct BookSide
{
    bool left;
    double textLeftMm() const { return left ? 17 : 20; }
    double textRightMm() const { return left ? 128 : 131; }
};

TextStyle bodyStyle()
{
    TextStyle body{Typeface::Book, 11};
    body.align = Qt::AlignJustify;
    body.leading = 1.36;
    body.firstLineIndentMm = 5;
    return body;
}

void drawFurniture(Sheet& sheet, const BookSide& side, const QString& head, const QString& folio)
{
    TextStyle small{Typeface::Book, 8.5, QColor(60, 56, 52)};
    small.align = Qt::AlignHCenter;
    small.letterSpacingPt = 1.4;
    const double middle = (side.textLeftMm() + side.textRightMm()) / 2;
    sheet.text(middle, 17, head, small);
    small.letterSpacingPt = 0;
    small.points = 10;
    sheet.text(middle, 198, folio, small);
}

} // namespace

FlatPage drawBookLeft()
{
    Sheet sheet(148, 210, bookPaper);
    const BookSide side{true};
    const QStringList lines = pageText(QStringLiteral("book-left"));
    drawFurniture(sheet, side, lines.first(), lines.last());
    const double middle = (side.textLeftMm() + side.textRightMm()) / 2;
    TextStyle chapter{Typeface::Book, 11};
    chapter.align = Qt::AlignHCenter;
    chapter.letterSpacingPt = 2;
    sheet.text(middle, 41, lines.at(1), chapter);
    TextStyle title{Typeface::BookItalic, 19};
    title.align = Qt::AlignHCenter;
    sheet.text(middle, 52, lines.at(2), title);
    sheet.rule(middle - 9, 58, middle + 9, 58, 0.25, QColor(90, 84, 76));
    double y = 66;
    TextStyle body = bodyStyle();
    for (const QString& line : lines.mid(3, lines.size() - 4)) {
        body.firstLineIndentMm = y > 70 ? 5 : 0;
        y = sheet.paragraph(side.textLeftMm(), y, side.textRightMm() - side.textLeftMm(), line, body);
    }
    return finish(sheet);
}

FlatPage drawBookRight()
{
    Sheet sheet(148, 210, bookPaper);
    const BookSide side{false};
    const QStringList lines = pageText(QStringLiteral("book-right"));
    drawFurniture(sheet, side, lines.first(), lines.last());
    double y = 25;
    for (const QString& line : lines.mid(1, lines.size() - 2))
        y = sheet.paragraph(side.textLeftMm(), y, side.textRightMm() - side.textLeftMm(), line, bodyStyle());
    return finish(sheet);
}

} // namespace deskpictures

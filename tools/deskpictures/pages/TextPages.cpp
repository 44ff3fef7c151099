#include "Pages.h"

namespace deskpictures {
namespace {

struct TextPageStyle
{
    const char* name;
    TextStyle heading;
    TextStyle body;
    double marginMm;
    double topMm;
    double paragraphGapMm;
};

FlatPage drawTextPage(const TextPageStyle& page)
{
    Sheet sheet(210, 297);
    const QStringList lines = pageText(QLatin1String(page.name));
    const double width = sheet.widthMm() - 2 * page.marginMm;
    double y = sheet.paragraph(page.marginMm, page.topMm, width, lines.first(), page.heading) + 5;
    for (const QString& line : lines.mid(1))
        y = sheet.paragraph(page.marginMm, y, width, line, page.body) + page.paragraphGapMm;
    return finish(sheet);
}

} // namespace

FlatPage drawEnglishText()
{
    TextStyle heading{Typeface::Book, 21};
    TextStyle body{Typeface::Serif, 12};
    body.align = Qt::AlignJustify;
    body.leading = 1.48;
    return drawTextPage({"english", heading, body, 26, 26, 3.6});
}

FlatPage drawChineseText()
{
    TextStyle heading{Typeface::ChineseBold, 20};
    heading.align = Qt::AlignHCenter;
    TextStyle body{Typeface::Chinese, 13.5};
    body.leading = 1.9;
    const double characterMm = body.points * 25.4 / 72;
    body.firstLineIndentMm = 2 * characterMm;
    // The width is a whole number of characters, so that the right edge is straight.
    const double margin = (210 - 34 * characterMm) / 2;
    return drawTextPage({"chinese", heading, body, margin, 26, 0});
}

FlatPage drawRussianText()
{
    TextStyle heading{Typeface::SansBold, 17};
    TextStyle body{Typeface::Serif, 12.5};
    body.align = Qt::AlignJustify;
    body.leading = 1.62;
    body.firstLineIndentMm = 8;
    return drawTextPage({"russian", heading, body, 27, 27, 1.5});
}

} // namespace deskpictures

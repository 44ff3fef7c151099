#pragma once

#include <QImage>
#include <QStringList>

/// Pages with a known text. Fonts are those that the build itself needs.
namespace testPages {

struct Style
{
    QString family = QStringLiteral("DejaVu Serif");
    int size = 36; ///< px of the em
    int pitch = 56;
};

/// White paper with lines of black print.
QImage page(
    const QSize& size, const QStringList& lines, const Style& style = Style(), int left = 120, int top = 150);
/// More lines on a page.
void print(QImage& page, const QStringList& lines, const Style& style, int left, int top);

QString chineseFamily();

} // namespace testPages

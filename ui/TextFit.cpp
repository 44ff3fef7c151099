#include "TextFit.h"

#include <QStringList>

#include <algorithm>

int TextFit::longestWord(const QString& text, const QFontMetrics& metrics)
{
    int width = 0;
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    for (const QString& word : words)
        width = std::max(width, metrics.horizontalAdvance(word));
    return width;
}

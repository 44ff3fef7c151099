#include "Caption.h"

#include <QFont>
#include <QFontInfo>
#include <QFontMetrics>
#include <QRawFont>
#include <QStringList>

#include <algorithm>
#include <stdexcept>

namespace {

struct FontChoice
{
    const char* language;
    const char* family;
    int pixels; // at scale 1
};

constexpr FontChoice fontChoices[] = {
    {"zh", "Noto Sans CJK SC", 13},
    {"hk", "Noto Sans CJK HK", 13},
    {"jp", "Noto Sans CJK JP", 13},
    {"en", "Noto Sans CJK SC", 13},
    {"pl", "DejaVu Sans", 12},
};
constexpr int smallestPixels = 10;

const FontChoice& choiceFor(const QString& language)
{
    for (const FontChoice& choice : fontChoices) {
        if (language == QLatin1String(choice.language))
            return choice;
    }
    throw std::runtime_error("no caption font for the language " + language.toStdString());
}

QFont sizedFont(const FontChoice& choice, int pixels)
{
    QFont font{QLatin1String(choice.family)};
    font.setPixelSize(pixels);
    font.setHintingPreference(QFont::PreferVerticalHinting);
    return font;
}

// A missing font would be replaced silently, and the captions would show empty boxes.
void requireFont(const QFont& font, const QString& caption)
{
    const bool installed = QFontInfo(font).family() == font.family();
    const QRawFont raw = QRawFont::fromFont(font);
    for (const uint character : caption.toUcs4()) {
        if (!installed || !raw.supportsCharacter(character))
            throw std::runtime_error("the font " + font.family().toStdString() + " is needed for \"" +
                                     caption.toStdString() + "\" (fonts-noto-cjk, fonts-dejavu-core)");
    }
}

int widest(const QFontMetrics& metrics, const QStringList& lines)
{
    int width = 0;
    for (const QString& line : lines)
        width = std::max({width, metrics.horizontalAdvance(line), metrics.boundingRect(line).width()});
    return width;
}

// The caption in one line, and in two at the space that makes the wider half narrowest.
QVector<QStringList> waysToBreak(const QString& caption, const QFontMetrics& metrics)
{
    QVector<QStringList> ways{{caption}};
    QStringList best;
    for (int space = caption.indexOf(QLatin1Char(' ')); space >= 0;
         space = caption.indexOf(QLatin1Char(' '), space + 1)) {
        const QStringList halves{caption.left(space), caption.mid(space + 1)};
        if (best.isEmpty() || widest(metrics, halves) < widest(metrics, best))
            best = halves;
    }
    if (!best.isEmpty())
        ways.append(best);
    return ways;
}

void drawLines(QPainter& painter, const QStringList& lines, const QFont& font, const QRect& box, int scale)
{
    const QFontMetrics metrics(font);
    const int lineHeight = font.pixelSize() + 2 * scale;
    // A single line stands a little lower than the first of two.
    int baseline = box.top() + font.pixelSize() + (lines.size() == 1 ? 3 * scale : 0);
    painter.setFont(font);
    painter.setPen(Qt::white);
    for (const QString& line : lines) {
        painter.drawText(box.center().x() - metrics.horizontalAdvance(line) / 2, baseline, line);
        baseline += lineHeight;
    }
}

} // namespace

void drawCaption(
    QPainter& painter, const QString& caption, const QString& language, const QRect& box, int scale)
{
    const FontChoice& choice = choiceFor(language);
    requireFont(sizedFont(choice, choice.pixels * scale), caption);
    for (int pixels = choice.pixels * scale; pixels >= smallestPixels * scale; --pixels) {
        const QFont font = sizedFont(choice, pixels);
        for (const QStringList& lines : waysToBreak(caption, QFontMetrics(font))) {
            if (widest(QFontMetrics(font), lines) <= box.width()) {
                drawLines(painter, lines, font, box, scale);
                return;
            }
        }
    }
    throw std::runtime_error("the caption \"" + caption.toStdString() + "\" is too long for its button");
}

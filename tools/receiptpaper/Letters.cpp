#include "Letters.h"

#include <QFont>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int letterWidth = 12, fontPixels = 20; // dots
constexpr uint firstWide = 0x2e80;               // Chinese, Japanese, Korean, pictures

QImage drawLetter(const QString& letter, bool isBold)
{
    const bool isWide = letter.toUcs4().value(0) >= firstWide;
    QImage cell(isWide ? 2 * letterWidth : letterWidth, Letters::height, QImage::Format_Grayscale8);
    cell.fill(Qt::white);
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setPixelSize(fontPixels);
    font.setBold(isBold);
    font.setStyleStrategy(QFont::NoAntialias);
    QPainter painter(&cell);
    painter.setFont(font);
    painter.drawText(cell.rect(), Qt::AlignCenter | Qt::TextDontClip, letter);
    return cell;
}

} // namespace

bool Letters::add(const QString& letter, const LetterStyle& style)
{
    QImage cell = drawLetter(letter, style.isBold);
    cell = cell.scaled(cell.width() * style.width, cell.height() * style.height);
    if (style.isWhiteOnBlack)
        cell.invertPixels();
    if (style.isTurned)
        cell = cell.transformed(QTransform().rotate(90));
    if (used_ + cell.width() > room_)
        return false;
    used_ += cell.width();
    cells_.append(cell);
    return true;
}

QImage Letters::take()
{
    int highest = height;
    for (const QImage& cell : cells_)
        highest = std::max(highest, cell.height());
    QImage line(room_, highest, QImage::Format_Grayscale8);
    line.fill(Qt::white);
    QPainter painter(&line);
    int x = 0;
    for (const QImage& cell : cells_) {
        painter.drawImage(x, highest - cell.height(), cell);
        x += cell.width();
    }
    cells_.clear();
    used_ = 0;
    return line;
}

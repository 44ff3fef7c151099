#include "Pen.h"

#include <QPainter>

#include <algorithm>

using deskpictures::TextStyle;
using deskpictures::Typeface;

namespace {

constexpr double mmPerPoint = 25.4 / 72;
constexpr double leastRoom = 18; // mm: no line is set in less beside a picture

struct Room
{
    double left, right;
};

// The wider side of what stands in the way.
Room roomAt(const Column& column, double top, double bottom)
{
    Room room{column.left, column.right};
    for (const QRectF& thing : column.obstacles) {
        if (thing.bottom() < top || thing.top() > bottom || thing.right() < room.left ||
            thing.left() > room.right)
            continue;
        if (thing.left() - room.left > room.right - thing.right())
            room.right = thing.left() - 2.5;
        else
            room.left = thing.right() + 2.5;
    }
    return room;
}

bool isClosing(QChar c)
{
    return QStringLiteral("，。：；？！、）”").contains(c);
}

} // namespace

TextStyle Pen::body(double points) const
{
    TextStyle style{words_.tongue() == Tongue::chinese ? Typeface::Chinese : Typeface::Serif, points};
    style.leading = words_.tongue() == Tongue::chinese ? 1.6 : 1.25;
    return style;
}

TextStyle Pen::bold(double points) const
{
    TextStyle style = body(points);
    style.typeface = words_.tongue() == Tongue::chinese ? Typeface::ChineseBold : Typeface::SerifBold;
    return style;
}

TextStyle Pen::italic(double points) const
{
    TextStyle style = body(points);
    if (words_.tongue() != Tongue::chinese)
        style.typeface = Typeface::SerifItalic;
    return style;
}

TextStyle Pen::light(double points) const
{
    TextStyle style = body(points);
    style.typeface = words_.tongue() == Tongue::chinese ? Typeface::ChineseSans : Typeface::Sans;
    return style;
}

// What stands beside the text goes before it, into its place or behind it.
QString Pen::reading(const std::vector<Turn>& turns) const
{
    QString before, text, behind, last;
    for (const Noted& noted : noted_) {
        const Turn turn = noted.aside <= 0 ? Turn::inPlace : turns[static_cast<size_t>(noted.aside - 1)];
        (noted.aside == foot   ? last
         : turn == Turn::first ? before
         : turn == Turn::last  ? behind
                               : text) += noted.words + QLatin1Char('\n');
    }
    return before + text + behind + last;
}

QStringList Pen::readings() const
{
    int groups = 0;
    for (const Noted& noted : noted_)
        groups = std::max(groups, noted.aside);
    QStringList all;
    std::vector<Turn> turns(static_cast<size_t>(groups), Turn::inPlace);
    for (;;) {
        all << reading(turns);
        // Counts through all of them, as an odometer does.
        size_t at = 0;
        while (at < turns.size() && turns[at] == Turn::first)
            turns[at++] = Turn::inPlace;
        if (at == turns.size())
            return all;
        turns[at] = turns[at] == Turn::inPlace ? Turn::last : Turn::first;
    }
}

void Pen::note(const QString& words)
{
    noted_.push_back({begun_ + words, aside_});
    begun_.clear();
}

void Pen::line(double xMm, double baselineMm, const QString& words, const TextStyle& style)
{
    sheet_.text(xMm, baselineMm, words, style);
    note(words);
}

void Pen::row(double baselineMm,
              const std::vector<double>& lefts,
              const QStringList& cells,
              const TextStyle& style)
{
    for (int i = 0; i < cells.size(); ++i)
        sheet_.text(lefts[static_cast<size_t>(i)], baselineMm, cells[i], style);
    note(cells.join(QLatin1Char(' ')));
}

// Words, or single ideographs with the punctuation that must follow them.
QStringList Pen::broken(const QString& words) const
{
    if (words_.tongue() != Tongue::chinese)
        return words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QStringList parts;
    for (const QChar c : words) {
        const bool digits = !parts.isEmpty() && c.unicode() < 0x80 && parts.back().back().unicode() < 0x80;
        if (!parts.isEmpty() && (isClosing(c) || digits))
            parts.back() += c;
        else
            parts += QString(c);
    }
    return parts;
}

double Pen::paragraph(const Column& column, const QString& words, const TextStyle& style)
{
    const bool spaced = words_.tongue() != Tongue::chinese;
    const double step = style.points * style.leading * mmPerPoint;
    const double space = spaced ? sheet_.textWidthMm(QStringLiteral(" "), style) : 0;
    const QStringList parts = broken(words);
    double y = column.top, indent = !begun_.isEmpty() ? 0 : spaced ? 3 : 2 * style.points * mmPerPoint;
    for (int next = 0; next < parts.size() && y + step <= column.bottom; y += step, indent = 0) {
        Room room = roomAt(column, y, y + step);
        if (room.right - room.left < leastRoom)
            continue;
        room.left += indent;
        int end = next;
        double width = 0;
        std::vector<double> widths;
        for (; end < parts.size(); ++end) {
            const double part = sheet_.textWidthMm(parts[end], style);
            if (end > next && width + part + space * (end - next) > room.right - room.left)
                break;
            widths.push_back(part);
            width += part;
        }
        const bool full = end < parts.size() && (style.align & Qt::AlignJustify) && end - next > 1;
        const double gap = full ? (room.right - room.left - width) / (end - next - 1) : space;
        double x = room.left;
        TextStyle plain = style;
        plain.align = Qt::AlignLeft;
        for (int i = next; i < end; ++i) {
            sheet_.text(x, y + step * 0.78, parts[i], plain);
            x += widths[static_cast<size_t>(i - next)] + gap;
        }
        note(parts.mid(next, end - next).join(spaced ? QStringLiteral(" ") : QString()));
        next = end;
    }
    return y;
}

double Pen::opening(const Column& column, const QString& words, const TextStyle& style)
{
    // The base line of the letter is that of the second line; half a point keeps it off the text.
    const double step = style.points * style.leading * mmPerPoint;
    TextStyle large = style;
    large.align = Qt::AlignLeft;
    large.points = style.points * (style.leading + 0.75);
    const QString letter = words.left(1);
    const double wide = sheet_.textWidthMm(letter, large);
    sheet_.text(column.left, column.top + step * 1.78, letter, large);
    begun_ = letter;
    Column beside = column;
    beside.obstacles.push_back({column.left, column.top, wide - 1.7, step * 1.9});
    return paragraph(beside, words.mid(1), style);
}

double Pen::fill(const Column& column, const TextStyle& style, int sentencesEach)
{
    const double step = style.points * style.leading * mmPerPoint;
    Column rest = column;
    while (rest.top + step <= column.bottom)
        rest.top = paragraph(rest, words_.sentences(sentencesEach), style);
    return rest.top;
}

void Pen::picture(const QRectF& mm)
{
    QRandomGenerator& any = words_.any();
    const QRectF place = sheet_.px(mm);
    QImage photo(qRound(place.width()), qRound(place.height()), QImage::Format_RGB32);
    QPainter p(&photo);
    QLinearGradient sky(0, 0, 0, photo.height());
    sky.setColorAt(0, QColor::fromHsv(any.bounded(360), any.bounded(30, 120), any.bounded(150, 240)));
    sky.setColorAt(1, QColor::fromHsv(any.bounded(360), any.bounded(30, 120), any.bounded(40, 150)));
    p.fillRect(photo.rect(), sky);
    p.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < 60; ++i) {
        const int size = any.bounded(photo.width() / 60 + 1, photo.width() / 4 + 2);
        p.setPen(
            QPen(QColor::fromHsv(any.bounded(360), any.bounded(120), any.bounded(255)), any.bounded(1, 9)));
        p.setBrush(QColor::fromHsv(any.bounded(360), any.bounded(120), any.bounded(255), 160));
        const QPoint at(any.bounded(photo.width()), any.bounded(photo.height()));
        if (i % 3 == 0)
            p.drawLine(at, at + QPoint(any.bounded(size), any.bounded(size)));
        else
            p.drawEllipse(at, size, any.bounded(4, size + 6));
    }
    p.end();
    if (any.bounded(2) == 0) { // the screen of a newspaper, 85 lines an inch
        const int cell = std::max(3, qRound(sheet_.dpi() / 85));
        const QImage tones = photo;
        photo.fill(Qt::white);
        QPainter dots(&photo);
        dots.setRenderHint(QPainter::Antialiasing);
        dots.setPen(Qt::NoPen);
        dots.setBrush(QColor(30, 28, 28));
        for (int y = 0; y < photo.height(); y += cell)
            for (int x = (y / cell % 2) * cell / 2; x < photo.width(); x += cell) {
                const double dark = 1 - qGray(tones.pixel(x, y)) / 255.0;
                dots.drawEllipse(QPointF(x, y), cell * 0.72 * dark, cell * 0.72 * dark);
            }
    }
    sheet_.painter().drawImage(place.topLeft(), photo);
}

// Pages of an old typewriter: its ribbon is dry on one side of a type and wet on the other, its types are
// full of lint or worn, its paper has turned yellow.
#include "Layouts.h"
#include "Pen.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

using deskpictures::TextStyle;
using deskpictures::Typeface;

namespace {

const QColor paper(236, 222, 184);
constexpr double lineStep = 8.5, leftEdge = 26; // mm
constexpr double clogged = 0.06, worn = 0.05;   // of the types struck

class Typewriter
{
public:
    explicit Typewriter(Pen& pen) : pen_(pen), chinese_(pen.words().tongue() == Tongue::chinese)
    {
        font_.setFamily(chinese_ ? QStringLiteral("Noto Serif CJK SC") : QStringLiteral("Nimbus Mono PS"));
        font_.setPixelSize(qRound(pen.sheet().px(chinese_ ? 4.2 : 4.23))); // ten an inch
        font_.setWeight(chinese_ ? QFont::Medium : QFont::DemiBold);
    }

    int mostLetters() const { return chinese_ ? 36 : 62; }
    bool isChinese() const { return chinese_; }

    /// @return where the line ends, mm
    double strike(double xMm, double yMm, const QString& line)
    {
        const double carriage = 0.1 * random(); // each line hangs a little differently
        for (const QChar c : line) {
            if (!c.isSpace())
                type(xMm + 0.1 * random(), yMm + carriage + 0.14 * random(), c);
            xMm += chinese_ && c.unicode() >= 0x80 ? 4.4 : 2.54;
        }
        return xMm;
    }

private:
    double random() { return 2 * pen_.words().any().generateDouble() - 1; }

    void type(double xMm, double yMm, QChar c)
    {
        QPainter& painter = pen_.sheet().painter();
        QPainterPath outline;
        outline.addText(pen_.sheet().px(xMm, yMm), font_, QString(c));
        const QRectF box = outline.boundingRect();
        const QBrush ink = ribbon(box);
        painter.setBrush(ink);
        painter.setPen(QPen(ink, pen_.sheet().px(0.07 + 0.05 * random()))); // how hard it was struck
        painter.drawPath(outline);
        const double kind = pen_.words().any().generateDouble();
        if (kind < clogged)
            fill(outline, ink);
        else if (kind < clogged + worn)
            breakOff(box);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::NoBrush);
    }

    QBrush ribbon(const QRectF& box)
    {
        const auto tone = [&] { return QColor::fromHsv(250, 40, qRound(75 + 45 * random())); };
        QLinearGradient shade(box.topLeft(), random() < 0 ? box.bottomLeft() : box.topRight());
        shade.setColorAt(0, tone());
        shade.setColorAt(1, tone());
        return shade;
    }

    void fill(const QPainterPath& outline, const QBrush& ink)
    {
        QPainter& painter = pen_.sheet().painter();
        painter.save();
        painter.setOpacity(0.6);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        for (const QPolygonF& part : outline.toSubpathPolygons())
            painter.drawPolygon(part);
        painter.restore();
    }

    void breakOff(const QRectF& box)
    {
        const double y = box.center().y() + 0.4 * box.height() * random();
        pen_.sheet().painter().setPen(QPen(paper, pen_.sheet().px(0.12)));
        pen_.sheet().painter().drawLine(QPointF(box.left(), y), QPointF(box.right(), y + random()));
    }

    Pen& pen_;
    bool chinese_;
    QFont font_;
};

// How many letters of the word go on the line before a hyphen; none when it is not broken.
int brokenAt(const QString& word, int room)
{
    static const QString vowels = QStringLiteral("aeiouyаеёиоуыэюя");
    const auto isVowel = [&](int i) { return vowels.contains(word[i].toLower()); };
    for (int at = std::min(room - 1, word.size() - 4); at >= 3; --at) {
        bool letters = true;
        for (const QChar c : word)
            letters = letters && c.isLetter();
        if (letters && isVowel(at - 1) && !isVowel(at) && isVowel(at + 1))
            return at;
    }
    return 0;
}

/// Takes from the text what goes on the next line.
QString lineOf(QStringList& words, const Typewriter& machine)
{
    QString line;
    while (!words.isEmpty()) {
        const QString space = line.isEmpty() || machine.isChinese() ? QString() : QStringLiteral(" ");
        const int room = machine.mostLetters() - line.size() - space.size();
        if (words.front().size() > room) {
            const int at = machine.isChinese() ? 0 : brokenAt(words.front(), room);
            if (at > 0) {
                line += space + words.front().left(at) + QLatin1Char('-');
                words.front().remove(0, at);
            }
            break;
        }
        line += space + words.takeFirst();
    }
    return line;
}

} // namespace

void layout::typescript(Pen& pen)
{
    Typewriter machine(pen);
    QRandomGenerator& any = pen.words().any();
    pen.sheet().box({0, 0, 210, 297}, paper);
    pen.sheet().painter().save();
    pen.sheet().painter().rotate(any.generateDouble() * 1.2 -
                                 0.6); // the sheet was not straight in the roller
    const auto put = [&](double x, double y, const QString& line) {
        pen.note(line);
        return machine.strike(x, y, line);
    };
    put(98, 20, QStringLiteral("- %1 -").arg(any.bounded(2, 90)));
    double y = 36;
    while (y < 270) {
        const QString heading = pen.words().headline();
        const double end = put(leftEdge, y, heading);
        pen.sheet().rule(leftEdge, y + 1.3, end, y + 1.3, 0.35, QColor(70, 66, 80));
        for (int paragraph = 0; paragraph < 2; ++paragraph) {
            const QString text = pen.words().sentences(5);
            QStringList words =
                text.split(machine.isChinese() ? QString() : QStringLiteral(" "), Qt::SkipEmptyParts);
            for (double x = leftEdge + 8; !words.isEmpty() && (y += lineStep) < 280; x = leftEdge)
                put(x, y, lineOf(words, machine));
        }
        y += 2 * lineStep;
    }
    pen.sheet().painter().restore();
}

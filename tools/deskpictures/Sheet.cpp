#include "Sheet.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>
#include <array>
#include <cmath>

namespace deskpictures {
namespace {

struct Face
{
    const char* family;
    const char* package;
    QFont::Weight weight;
    bool italic;
};

// In the order of Typeface.
constexpr std::array<Face, 11> faces = {{
    {"Nimbus Roman", "fonts-urw-base35", QFont::Normal, false},
    {"Nimbus Roman", "fonts-urw-base35", QFont::Bold, false},
    {"Nimbus Roman", "fonts-urw-base35", QFont::Normal, true},
    {"P052", "fonts-urw-base35", QFont::Normal, false},
    {"P052", "fonts-urw-base35", QFont::Normal, true},
    {"Nimbus Sans", "fonts-urw-base35", QFont::Normal, false},
    {"Nimbus Sans", "fonts-urw-base35", QFont::Bold, false},
    {"DejaVu Sans Mono", "fonts-dejavu-core", QFont::Normal, false},
    {"Noto Serif CJK SC", "fonts-noto-cjk", QFont::Normal, false},
    {"Noto Serif CJK SC", "fonts-noto-cjk", QFont::Bold, false},
    {"Noto Sans CJK SC", "fonts-noto-cjk", QFont::Normal, false},
}};

constexpr double pointsPerInch = 72;
constexpr double mmPerInch = 25.4;

// Qt adds the foundry where a family is installed in several formats; the OpenType files, which alone have
// Cyrillic letters, are signed "urw". Empty: not installed.
QString familyOf(const Face& face)
{
    const QStringList families = QFontDatabase().families();
    const QString plain = QLatin1String(face.family);
    for (const QString& name : {plain + QStringLiteral(" [urw]"), plain})
        if (families.contains(name))
            return name;
    return {};
}

// Looked up once: the question is costly and the answer does not change.
const std::array<QString, faces.size()>& familyNames()
{
    static const std::array<QString, faces.size()> names = [] {
        std::array<QString, faces.size()> found;
        std::transform(faces.begin(), faces.end(), found.begin(), familyOf);
        return found;
    }();
    return names;
}

} // namespace

QString missingFont()
{
    for (size_t i = 0; i < faces.size(); ++i)
        if (familyNames().at(i).isEmpty())
            return QStringLiteral("%1 (package %2)")
                .arg(QLatin1String(faces.at(i).family), QLatin1String(faces.at(i).package));
    return {};
}

Sheet::Sheet(double widthMm, double heightMm, const QColor& paper, double dpi)
    : m_widthMm(widthMm), m_heightMm(heightMm), m_dpi(dpi),
      m_image(qRound(px(widthMm)), qRound(px(heightMm)), QImage::Format_RGBA8888_Premultiplied)
{
    m_image.fill(paper);
    m_painter.begin(&m_image);
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                             QPainter::SmoothPixmapTransform);
}

QRectF Sheet::px(const QRectF& mm) const
{
    return {px(mm.x()), px(mm.y()), px(mm.width()), px(mm.height())};
}

// Hinting would snap strokes to the drawing's own grid, which the camera never sees.
QFont Sheet::font(const TextStyle& style) const
{
    const auto index = static_cast<size_t>(style.typeface);
    const Face& face = faces.at(index);
    QFont result(familyNames().at(index));
    result.setPixelSize(std::max(1, qRound(style.points * m_dpi / pointsPerInch)));
    result.setWeight(face.weight);
    result.setItalic(face.italic);
    result.setHintingPreference(QFont::PreferNoHinting);
    result.setStyleStrategy(QFont::PreferAntialias);
    result.setLetterSpacing(QFont::AbsoluteSpacing, style.letterSpacingPt * m_dpi / pointsPerInch);
    return result;
}

double Sheet::textWidthMm(const QString& words, const TextStyle& style) const
{
    return QFontMetricsF(font(style)).horizontalAdvance(words) * mmPerInch / m_dpi;
}

void Sheet::text(double xMm, double baselineMm, const QString& words, const TextStyle& style)
{
    double left = xMm;
    if (style.align & Qt::AlignHCenter)
        left -= textWidthMm(words, style) / 2;
    else if (style.align & Qt::AlignRight)
        left -= textWidthMm(words, style);
    m_painter.setFont(font(style));
    m_painter.setPen(style.ink);
    m_painter.drawText(px(left, baselineMm), words);
}

double Sheet::paragraph(double xMm,
                        double topMm,
                        double widthMm,
                        const QString& words,
                        const TextStyle& style,
                        std::vector<TextRow>* rows,
                        double bottomMm)
{
    QTextLayout layout(words, font(style));
    QTextOption option(style.align);
    option.setWrapMode(QTextOption::WordWrap);
    layout.setTextOption(option);
    const double step = style.points * style.leading * m_dpi / pointsPerInch;
    const double room = px(bottomMm - topMm);
    double y = 0;
    layout.beginLayout();
    while (y + step <= room) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        const double indent = line.lineNumber() == 0 ? px(style.firstLineIndentMm) : 0;
        line.setLineWidth(px(widthMm) - indent);
        line.setPosition({indent, y + (step - line.height()) / 2});
        if (rows) {
            const double left = xMm + indent * mmPerInch / m_dpi;
            rows->push_back({left,
                             left + line.naturalTextWidth() * mmPerInch / m_dpi,
                             topMm + (line.position().y() + line.ascent()) * mmPerInch / m_dpi,
                             style.points * mmPerInch / pointsPerInch,
                             words.mid(line.textStart(), line.textLength()).trimmed()});
        }
        y += step;
    }
    layout.endLayout();
    m_painter.setPen(style.ink);
    layout.draw(&m_painter, px(xMm, topMm));
    return topMm + y * mmPerInch / m_dpi;
}

void Sheet::rule(double x1Mm, double y1Mm, double x2Mm, double y2Mm, double widthMm, const QColor& ink)
{
    m_painter.setPen(QPen(ink, px(widthMm), Qt::SolidLine, Qt::FlatCap));
    m_painter.drawLine(px(x1Mm, y1Mm), px(x2Mm, y2Mm));
}

void Sheet::box(const QRectF& mm, const QColor& fill, const QColor& edge, double edgeMm, double radiusMm)
{
    m_painter.setPen(edgeMm > 0 ? QPen(edge, px(edgeMm)) : QPen(Qt::NoPen));
    m_painter.setBrush(fill);
    m_painter.drawRoundedRect(px(mm), px(radiusMm), px(radiusMm));
    m_painter.setBrush(Qt::NoBrush);
}

QImage Sheet::take()
{
    m_painter.end();
    return std::move(m_image);
}

} // namespace deskpictures

#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

namespace deskpictures {

enum class Typeface {
    Serif,
    SerifBold,
    SerifItalic,
    Book,
    BookItalic,
    Sans,
    SansBold,
    Mono,
    Chinese,
    ChineseBold,
    ChineseSans
};

/// How a piece of text looks; sizes in points, as in a printer's order.
struct TextStyle
{
    Typeface typeface = Typeface::Serif;
    double points = 11;
    QColor ink = QColor(30, 28, 28);
    Qt::Alignment align = Qt::AlignLeft;
    double leading = 1.3;         ///< distance of two base lines as a multiple of the size
    double letterSpacingPt = 0;   ///< added between letters
    double firstLineIndentMm = 0; ///< paragraphs only
};

/// A line of text where it stands on the sheet.
struct TextRow
{
    double leftMm = 0;
    double rightMm = 0;
    double baselineMm = 0;
    double sizeMm = 0; ///< of its type
    QString words;
};

/// One side of a flat sheet of paper, drawn in millimetres from its top left corner. Reentrant.
class Sheet
{
public:
    /// @param dpi  dots per inch of the drawing
    Sheet(double widthMm, double heightMm, const QColor& paper = QColor(250, 249, 246), double dpi = 300);
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    double widthMm() const { return m_widthMm; }
    double heightMm() const { return m_heightMm; }
    double dpi() const { return m_dpi; }
    /// The painter's unit is the pixel; convert with px().
    QPainter& painter() { return m_painter; }
    double px(double mm) const { return mm * m_dpi / 25.4; }
    QPointF px(double xMm, double yMm) const { return {px(xMm), px(yMm)}; }
    QRectF px(const QRectF& mm) const;

    /// One line of text; x is its left end, middle or right end as style.align says.
    void text(double xMm, double baselineMm, const QString& words, const TextStyle& style);
    /// A broken and, with Qt::AlignJustify, justified paragraph. @return the y (mm) below its last line
    /// @param rows  receives its lines  @param bottomMm  lines that would reach below are left out
    double paragraph(double xMm,
                     double topMm,
                     double widthMm,
                     const QString& words,
                     const TextStyle& style,
                     std::vector<TextRow>* rows = nullptr,
                     double bottomMm = 1e9);
    double textWidthMm(const QString& words, const TextStyle& style) const;
    void rule(double x1Mm, double y1Mm, double x2Mm, double y2Mm, double widthMm, const QColor& ink);
    void box(const QRectF& mm,
             const QColor& fill,
             const QColor& edge = Qt::transparent,
             double edgeMm = 0,
             double radiusMm = 0);

    /// Ends the painting. @return 32-bit RGBA, premultiplied
    QImage take();

private:
    QFont font(const TextStyle& style) const;

    double m_widthMm;
    double m_heightMm;
    double m_dpi;
    QImage m_image;
    QPainter m_painter; // after the image that it paints on
};

/// Names the first font family the sheets need that this machine lacks, with its package; empty when all are
/// there.
QString missingFont();

} // namespace deskpictures

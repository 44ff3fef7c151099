#pragma once

#include <QImage>
#include <QRect>
#include <QSize>

#include <cstdint>
#include <vector>

/// Scales frames for the display. Reducing averages over the exact area that each shown pixel covers (box
/// filter), so that small print neither flickers nor breaks up; enlarging is bilinear. Keeps its buffers and
/// the last result, so that painting the same frame again costs nothing. One instance for one thread.
class FrameScaler
{
public:
    /// @param frame      any format; RGB888 is the fast one.
    /// @param displayed  the size of the whole picture on the display, px.
    /// @param visible    the part of that to make, px; within (0, 0, displayed).
    /// @return RGB32 of the size of `visible`, valid until the next call; null when a size is empty or
    /// `visible`
    ///         is not inside.
    const QImage& scale(const QImage& frame, const QSize& displayed, const QRect& visible);

private:
    /// Which source pixels make up each shown one along an axis, and their weights in 1/256.
    struct Axis
    {
        int taps = 0;
        std::vector<int> first;             // per shown pixel; first + taps stays inside the source
        std::vector<std::uint16_t> weights; // taps per shown pixel, together 256

        void build(int sourceLength, int shownLength, int shownBegin, int shownEnd);
        int sourceBegin() const { return first.front(); }
        int sourceEnd() const { return first.back() + taps; }
    };

    void render(const QImage& rgb);
    void blendRows(const QImage& rgb, int shownRow);
    void blendColumns(QRgb* line) const;

    Axis columns_;
    Axis rows_;
    std::vector<std::uint16_t> row_; // one blended source row, three values a pixel
    QImage result_;
    qint64 frameKey_ = 0;
    QSize frameSize_;
    QSize displayed_;
    QRect visible_;
};

#pragma once

#include <QImage>
#include <QString>

/// How a printer draws the letters that follow.
struct LetterStyle
{
    int width = 1, height = 1; ///< times the ordinary size
    bool isBold = false, isWhiteOnBlack = false, isTurned = false;
};

/// One line of text, black on white, 8-bit grey. Needs a QGuiApplication.
class Letters
{
public:
    static constexpr int height = 24; ///< dots of an ordinary letter

    /// @param room dots that the line may take
    explicit Letters(int room) : room_(room) {}

    /// @return false when the letter, a whole character, does not fit any more
    bool add(const QString& letter, const LetterStyle& style);
    bool isEmpty() const { return cells_.isEmpty(); }
    /// As wide as there is room; the letters stand at its left, on one ground. Begins a new line.
    QImage take();

private:
    int room_;
    int used_ = 0;
    QVector<QImage> cells_;
};

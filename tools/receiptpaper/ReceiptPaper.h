#pragma once

#include "CommandReader.h"
#include "Letters.h"

#include <QImage>
#include <QVector>

/// Draws what a receipt printer would print: takes the bytes that are sent to it, gives the paper as a
/// picture. What it does not know it leaves out. Needs a QGuiApplication; one thread at a time.
class ReceiptPaper
{
public:
    static constexpr int printableWidth = 384, margin = 40; ///< dots; one is a pixel of the picture

    /// In whatever pieces they come.
    void print(const QByteArray& bytes);
    bool isBlank() const { return strips_.isEmpty(); }
    /// 8-bit grey; with a margin on all sides.
    QImage image() const;

private:
    void obey(const PrinterCommand& command);
    void obeyStyle(const PrinterCommand& command);
    void write(const QString& text);
    void endLine();
    void feed(int dots);
    void printCode(const QImage& modules, int moduleWidth, int moduleHeight);
    void printBarcode(const QByteArray& text);
    void printPicture(const PrinterCommand& command);
    void append(const QImage& strip);

    CommandReader reader_;
    LetterStyle style_;
    bool isUpsideDown_ = false;
    int moduleWidth_ = 2, barHeight_ = 60, captionPlace_ = 0;
    Letters line_{printableWidth};
    QVector<QImage> strips_; ///< from the top; none wider than printableWidth
};

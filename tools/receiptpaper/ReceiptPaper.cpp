#include "ReceiptPaper.h"

#include "Codes.h"

#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

constexpr int lineDots = 30; // of an ordinary line with the space to the next

enum CaptionPlace { Above = 1, Below = 2 };

} // namespace

void ReceiptPaper::print(const QByteArray& bytes)
{
    reader_.add(bytes);
    while (const auto command = reader_.next())
        obey(*command);
}

void ReceiptPaper::obey(const PrinterCommand& command)
{
    switch (command.kind) {
    case PrinterCommand::Text:
        return write(command.text);
    case PrinterCommand::LineEnd:
        return endLine();
    case PrinterCommand::Feed:
        if (!line_.isEmpty())
            endLine();
        return feed(command.value * lineDots);
    case PrinterCommand::Barcode:
        return printBarcode(command.data);
    case PrinterCommand::QrCode:
        return printCode(codes::qrCode(command.data), moduleWidth_, moduleWidth_);
    case PrinterCommand::Picture:
        return printPicture(command);
    default:
        return obeyStyle(command);
    }
}

void ReceiptPaper::obeyStyle(const PrinterCommand& command)
{
    constexpr int scaleBits = 4, largestScale = 7;
    const bool isOn = command.value & 1;
    switch (command.kind) {
    case PrinterCommand::LetterSize:
        style_.width = (command.value >> scaleBits & largestScale) + 1;
        style_.height = (command.value & largestScale) + 1;
        break;
    case PrinterCommand::Bold:
        style_.isBold = isOn;
        break;
    case PrinterCommand::WhiteOnBlack:
        style_.isWhiteOnBlack = isOn;
        break;
    case PrinterCommand::Turned:
        style_.isTurned = isOn;
        break;
    case PrinterCommand::UpsideDown:
        isUpsideDown_ = isOn;
        break;
    case PrinterCommand::ModuleWidth:
        moduleWidth_ = std::max(1, command.value);
        break;
    case PrinterCommand::BarHeight:
        barHeight_ = std::max(1, command.value);
        break;
    case PrinterCommand::CaptionPlace:
        captionPlace_ = command.value;
        break;
    default:
        break;
    }
}

void ReceiptPaper::write(const QString& text)
{
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, text);
    for (int begin = 0, end = letters.toNextBoundary(); end >= 0;
         begin = end, end = letters.toNextBoundary()) {
        const QString letter = text.mid(begin, end - begin);
        if (line_.add(letter, style_))
            continue;
        endLine();
        line_.add(letter, style_); // one that does not fit into a line of its own is lost
    }
}

void ReceiptPaper::endLine()
{
    const QImage line = line_.take();
    append(isUpsideDown_ ? line.mirrored(true, true) : line);
    feed(lineDots - Letters::height);
}

void ReceiptPaper::feed(int dots)
{
    QImage blank(1, dots, QImage::Format_Grayscale8);
    blank.fill(Qt::white);
    append(blank);
}

// As on real paper there is nothing when the code is too wide for it.
void ReceiptPaper::printCode(const QImage& modules, int moduleWidth, int moduleHeight)
{
    if (modules.width() * moduleWidth <= printableWidth)
        append(modules.scaled(modules.width() * moduleWidth, modules.height() * moduleHeight));
}

void ReceiptPaper::printBarcode(const QByteArray& text)
{
    const QString caption = QString::fromUtf8(codes::barcodeContents(text));
    const auto printCaption = [&](CaptionPlace place) {
        if (captionPlace_ & place) {
            write(caption);
            endLine();
        }
    };
    printCaption(Above);
    printCode(codes::barcode(text), moduleWidth_, barHeight_);
    printCaption(Below);
}

void ReceiptPaper::printPicture(const PrinterCommand& command)
{
    if (command.data.isEmpty())
        return;
    constexpr int bitsOfByte = 8;
    QImage bits(reinterpret_cast<const uchar*>(command.data.constData()),
                command.value * bitsOfByte,
                command.data.size() / command.value,
                command.value,
                QImage::Format_Mono);
    bits.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    append(bits.convertToFormat(QImage::Format_Grayscale8));
}

void ReceiptPaper::append(const QImage& strip)
{
    if (!strip.isNull())
        strips_.append(strip.copy(0, 0, std::min(strip.width(), printableWidth), strip.height()));
}

QImage ReceiptPaper::image() const
{
    int height = 0;
    for (const QImage& strip : strips_)
        height += strip.height();
    QImage paper(printableWidth + 2 * margin, height + 2 * margin, QImage::Format_Grayscale8);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    int y = margin;
    for (const QImage& strip : strips_) {
        painter.drawImage(margin, y, strip);
        y += strip.height();
    }
    return paper;
}

#pragma once

#include <QByteArray>
#include <QTextCodec>

#include <memory>
#include <optional>

/// What a receipt printer is told by one command.
struct PrinterCommand
{
    enum Kind {
        Ignored,
        Text, ///< `text`
        LineEnd,
        Feed,       ///< `value` lines
        LetterSize, ///< `value`: width - 1 in the upper four bits, height - 1 in the lower ones
        Bold,       ///< `value`: 0 or 1, as in the next three
        WhiteOnBlack,
        UpsideDown,
        Turned,
        ModuleWidth,  ///< `value` dots
        BarHeight,    ///< `value` dots
        CaptionPlace, ///< `value`: 0 none, 1 above, 2 below, 3 both
        Barcode,      ///< `data`
        QrCode,       ///< `data`
        Picture       ///< `value` bytes a line, `data` the lines
    };

    Kind kind = Ignored;
    int value = 0;
    QByteArray data;
    QString text;
};

/// Takes bytes apart into commands, in whatever pieces they come.
class CommandReader
{
public:
    CommandReader();

    void add(const QByteArray& bytes) { bytes_ += bytes; }
    /// The next command that is there whole.
    std::optional<PrinterCommand> next();

private:
    std::optional<PrinterCommand> nextText();
    std::optional<PrinterCommand> nextCode();
    std::optional<PrinterCommand> nextPicture();
    std::optional<PrinterCommand> withData(PrinterCommand::Kind kind, int headBytes, int dataBytes);
    int byteAt(int place) const { return static_cast<unsigned char>(bytes_.at(place)); }
    int numberAt(int place) const { return byteAt(place) | byteAt(place + 1) << 8; }

    QByteArray bytes_;
    std::unique_ptr<QTextDecoder> decoder_; ///< keeps the begin of a letter that is not there whole
};

#include "CommandReader.h"

#include <algorithm>

namespace {

constexpr char lineFeed = 0x0a, esc = 0x1b, fs = 0x1c, gs = 0x1d;
constexpr int nameBytes = 2;

struct Command
{
    char name[nameBytes];
    int parameters;
    PrinterCommand::Kind kind;
};

constexpr Command commands[] = {
    {{fs, '&'}, 0, PrinterCommand::Ignored},  // Chinese characters, which are always on
    {{esc, '9'}, 1, PrinterCommand::Ignored}, // their encoding, which is always UTF-8
    {{esc, 'd'}, 1, PrinterCommand::Feed},
    {{gs, '!'}, 1, PrinterCommand::LetterSize},
    {{esc, 'E'}, 1, PrinterCommand::Bold},
    {{gs, 'B'}, 1, PrinterCommand::WhiteOnBlack},
    {{esc, '{'}, 1, PrinterCommand::UpsideDown},
    {{esc, 'V'}, 1, PrinterCommand::Turned},
    {{gs, 'w'}, 1, PrinterCommand::ModuleWidth},
    {{gs, 'h'}, 1, PrinterCommand::BarHeight},
    {{gs, 'f'}, 1, PrinterCommand::Ignored}, // the letters of the caption
    {{gs, 'H'}, 1, PrinterCommand::CaptionPlace},
};

bool isControl(char byte)
{
    return byte == lineFeed || byte == esc || byte == fs || byte == gs;
}

PrinterCommand plain(PrinterCommand::Kind kind, int value = 0)
{
    PrinterCommand command;
    command.kind = kind;
    command.value = value;
    return command;
}

} // namespace

CommandReader::CommandReader() : decoder_(QTextCodec::codecForName("UTF-8")->makeDecoder()) {}

std::optional<PrinterCommand> CommandReader::next()
{
    if (bytes_.isEmpty())
        return std::nullopt;
    if (!isControl(bytes_.at(0)))
        return nextText();
    if (bytes_.at(0) == lineFeed)
        return withData(PrinterCommand::LineEnd, 1, 0);
    if (bytes_.size() < nameBytes)
        return std::nullopt;
    if (bytes_.startsWith("\x1dk"))
        return nextCode();
    if (bytes_.startsWith("\x1dv"))
        return nextPicture();
    const auto* const known =
        std::find_if(std::begin(commands), std::end(commands), [this](const Command& command) {
            return std::equal(command.name, command.name + nameBytes, bytes_.begin());
        });
    if (known == std::end(commands))
        return withData(PrinterCommand::Ignored, nameBytes, 0);
    const int size = nameBytes + known->parameters;
    if (bytes_.size() < size)
        return std::nullopt;
    const PrinterCommand command = plain(known->kind, known->parameters > 0 ? byteAt(nameBytes) : 0);
    bytes_.remove(0, size);
    return command;
}

std::optional<PrinterCommand> CommandReader::nextText()
{
    const int size = int(std::find_if(bytes_.begin(), bytes_.end(), isControl) - bytes_.begin());
    PrinterCommand command = plain(PrinterCommand::Text);
    command.text = decoder_->toUnicode(bytes_.constData(), size);
    bytes_.remove(0, size);
    return command;
}

std::optional<PrinterCommand> CommandReader::nextCode()
{
    constexpr int barHead = 4, barSize = 3, qrHead = 7, qrSize = 5, kindAt = 2;
    const char kind = bytes_.size() > kindAt ? bytes_.at(kindAt) : 'I';
    if (kind != 'I' && kind != 'a')
        return withData(PrinterCommand::Ignored, kindAt + 1, 0);
    const bool isBar = kind == 'I';
    const int head = isBar ? barHead : qrHead;
    if (bytes_.size() < head)
        return std::nullopt;
    return isBar ? withData(PrinterCommand::Barcode, head, byteAt(barSize))
                 : withData(PrinterCommand::QrCode, head, numberAt(qrSize));
}

std::optional<PrinterCommand> CommandReader::nextPicture()
{
    constexpr int head = 8, lineBytesAt = 4, heightAt = 6;
    if (bytes_.size() < head)
        return std::nullopt;
    const int lineBytes = numberAt(lineBytesAt);
    auto command = withData(PrinterCommand::Picture, head, lineBytes * numberAt(heightAt));
    if (command)
        command->value = lineBytes;
    return command;
}

std::optional<PrinterCommand> CommandReader::withData(PrinterCommand::Kind kind, int headBytes, int dataBytes)
{
    if (bytes_.size() - headBytes < dataBytes)
        return std::nullopt;
    PrinterCommand command = plain(kind);
    command.data = bytes_.mid(headBytes, dataBytes);
    bytes_.remove(0, headBytes + dataBytes);
    return command;
}

#include "PrintCommands.h"

#include "PrintRaster.h"

namespace {

/// The printer's commands begin with one of these.
constexpr char esc = 0x1b, fs = 0x1c, gs = 0x1d;

constexpr int largestScale = 7;

/// A byte of the number: 0 is the lowest.
char byteOf(int number, int place)
{
    return static_cast<char>(static_cast<unsigned>(number) >> (8 * place) & 0xffU);
}

QByteArray bytes(std::initializer_list<char> list)
{
    return {list.begin(), static_cast<int>(list.size())};
}

PrintOrder print()
{
    PrintOrder order;
    order.isPrint = true;
    return order;
}

QByteArray feed(char lines)
{
    return bytes({esc, 'd', lines});
}

PrintOrder style(const QByteArray& command)
{
    return PrintOrder().command(command);
}

/// One command holds as many lines as two bytes can count, which is eight metres of paper.
QByteArray rasterBytes(const QImage& raster)
{
    const int lineBytes = raster.bytesPerLine(), height = raster.height();
    QByteArray data = bytes(
        {gs, 'v', '0', 0, byteOf(lineBytes, 0), byteOf(lineBytes, 1), byteOf(height, 0), byteOf(height, 1)});
    return data.append(reinterpret_cast<const char*>(raster.constBits()), lineBytes * height);
}

} // namespace

PrintOrder printCommands::text(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    return print()
        .command(bytes({fs, '&'}))     // Chinese characters
        .command(bytes({esc, '9', 1})) // in UTF-8
        .data(utf8.left(int(qstrlen(utf8.constData()))))
        .command(feed(2));
}

PrintOrder printCommands::barcode(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    return print()
        .command(bytes({gs, 'w', 2}))  // dots of a bar
        .command(bytes({gs, 'h', 60})) // dots of its height
        .command(bytes({gs, 'f', 0}))  // its text in the large letters
        .command(bytes({gs, 'H', 2}))  // and below
        .data(bytes({gs, 'k', 'I', byteOf(utf8.size(), 0)}) + utf8)
        .command(feed(3));
}

PrintOrder printCommands::qrCode(const QString& text)
{
    constexpr char automaticVersion = 0, correction = 1;
    const QByteArray utf8 = text.toUtf8();
    return print()
        .command(bytes({gs, 'w', 8})) // dots of a module
        .data(bytes({gs,
                     'k',
                     'a',
                     automaticVersion,
                     correction,
                     byteOf(utf8.size(), 0),
                     byteOf(utf8.size(), 1)}) +
              utf8)
        .command(feed(3));
}

PrintOrder printCommands::picture(const QString& path)
{
    PrintOrder order = print();
    const QImage raster = printRaster::read(path, order.problem);
    if (order.problem != PrintResult::Sent)
        return order;
    return order.data(rasterBytes(raster)).command(feed(3));
}

PrintOrder printCommands::letterSize(int n)
{
    const int scale = n & largestScale;
    return style(bytes({gs, '!', static_cast<char>(scale << 4 | scale)}));
}

PrintOrder printCommands::bold(bool on)
{
    return style(bytes({esc, 'E', on}));
}

PrintOrder printCommands::whiteOnBlack(bool on)
{
    return style(bytes({gs, 'B', on}));
}

PrintOrder printCommands::upsideDown(bool on)
{
    return style(bytes({esc, '{', on}));
}

PrintOrder printCommands::turned(bool on)
{
    return style(bytes({esc, 'V', on}));
}

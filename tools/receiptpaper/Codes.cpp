#include "Codes.h"

#include <zint.h>

#include <memory>

namespace {

struct FreeSymbol
{
    void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};

QImage draw(int kind, const QByteArray& text, int correction)
{
    constexpr int bitsOfByte = 8;
    const std::unique_ptr<zint_symbol, FreeSymbol> symbol(ZBarcode_Create());
    symbol->symbology = kind;
    symbol->option_1 = correction;
    symbol->input_mode = DATA_MODE;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.constData());
    if (text.isEmpty() || ZBarcode_Encode(symbol.get(), bytes, text.size()) >= ZINT_ERROR)
        return {};
    QImage code(symbol->width, symbol->rows, QImage::Format_Grayscale8);
    for (int y = 0; y < code.height(); ++y)
        for (int x = 0; x < code.width(); ++x) {
            const bool isBlack = symbol->encoded_data[y][x / bitsOfByte] >> (x % bitsOfByte) & 1;
            code.scanLine(y)[x] = isBlack ? 0 : 255;
        }
    return code;
}

} // namespace

QByteArray codes::barcodeContents(const QByteArray& text)
{
    QByteArray contents;
    for (int i = 0; i < text.size(); ++i) {
        const char following = text.size() > i + 1 ? text.at(i + 1) : '\0';
        const bool isMark = text.at(i) == '{' && following >= 'A' && following <= 'C';
        const bool isBrace = text.at(i) == '{' && following == '{';
        i += isMark || isBrace ? 1 : 0;
        if (!isMark)
            contents += text.at(i);
    }
    return contents;
}

QImage codes::barcode(const QByteArray& text)
{
    return draw(BARCODE_CODE128, barcodeContents(text), -1);
}

QImage codes::qrCode(const QByteArray& text)
{
    constexpr int lowCorrection = 1;
    return draw(BARCODE_QRCODE, text, lowCorrection);
}

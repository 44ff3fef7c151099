#include "Pages.h"

#include <zint.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>

namespace deskpictures {
namespace {

struct FreeSymbol
{
    void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};
using Symbol = std::unique_ptr<zint_symbol, FreeSymbol>;

struct Code
{
    int symbology;
    const char* format;
    const char* text;
    const char* title;
    double moduleMm;
    double rowMm; ///< height of a row of modules
    int row;
    int column;
};

// The module widths are those of ordinary labels: 0.33 mm for trade items, 0.4 to 0.6 mm for matrix codes.
constexpr std::array<Code, 8> codes = {{
    {BARCODE_CODE128, "CODE128", "LOT-2024-1187-B", "Parcel label", 0.38, 22, 0, 0},
    {BARCODE_EANX, "EAN13", "2099400012346", "Article in house", 0.36, 22, 0, 1},
    {BARCODE_QRCODE, "QRCODE", "https://paper-mill.example/visit?day=12", "Visit the mill", 0.85, 0.85, 1, 0},
    {BARCODE_DATAMATRIX, "DATAMATRIX", "MILL 7 SHELF 42 BOX 1187", "Store room tag", 1.1, 1.1, 1, 1},
    {BARCODE_PDF417,
     "PDF417",
     "Port Ellery;Warehouse 3;Gate B;2024-10-21;18 parcels",
     "Freight note",
     0.42,
     1.4,
     2,
     0},
    {BARCODE_AZTEC, "AZTEC", "RAIL 0714 COACH 5 SEAT 62", "Train ticket", 1.1, 1.1, 2, 1},
    {BARCODE_QRCODE, "QRCODE", "造纸坊 第42号书架", "Shelf mark", 0.85, 0.85, 3, 0},
    {BARCODE_CODE128, "CODE128", "0094417", "Receipt number", 0.42, 22, 3, 1},
}};

Symbol encode(const Code& code)
{
    Symbol symbol(ZBarcode_Create());
    if (!symbol)
        throw std::bad_alloc();
    symbol->symbology = code.symbology;
    symbol->input_mode = UNICODE_MODE;
    const int error = ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(code.text), 0);
    if (error >= ZINT_ERROR)
        throw std::runtime_error(std::string("the code \"") + code.text +
                                 "\" cannot be made: " + symbol->errtxt);
    return symbol;
}

bool isDark(const zint_symbol& symbol, int row, int column)
{
    return (symbol.encoded_data[row][column / 8] >> (column % 8)) & 1;
}

// Draws runs of dark modules, so that no hairline shows between two of them.
void drawSymbol(Sheet& sheet, const zint_symbol& symbol, const Code& code, double xMm, double yMm)
{
    QPainter& p = sheet.painter();
    p.save();
    p.setRenderHint(QPainter::Antialiasing, false);
    for (int row = 0; row < symbol.rows; ++row)
        for (int column = 0; column < symbol.width; ++column) {
            const int start = column;
            while (column < symbol.width && isDark(symbol, row, column))
                ++column;
            const QRectF run(xMm + start * code.moduleMm,
                             yMm + row * code.rowMm,
                             (column - start) * code.moduleMm,
                             code.rowMm);
            p.fillRect(sheet.px(run), QColor(18, 18, 20));
        }
    p.restore();
}

CodeTruth drawLabel(Sheet& sheet, const Code& code)
{
    const QRectF label(18 + code.column * 89, 47 + code.row * 57, 85, 52);
    sheet.box(label, Qt::white, QColor(150, 152, 156), 0.25, 2.5);
    sheet.text(label.left() + 5, label.top() + 7, QLatin1String(code.title), {Typeface::SansBold, 9.5});
    TextStyle kind{Typeface::Sans, 7.5, QColor(110, 112, 116)};
    kind.align = Qt::AlignRight;
    sheet.text(label.right() - 5, label.top() + 7, QLatin1String(code.format), kind);
    const Symbol symbol = encode(code);
    const QSizeF size(symbol->width * code.moduleMm, symbol->rows * code.rowMm);
    const QPointF at(label.center().x() - size.width() / 2,
                     label.top() + 9 + (label.height() - 15 - size.height()) / 2);
    drawSymbol(sheet, *symbol, code, at.x(), at.y());
    const bool linear = symbol->rows == 1;
    const QString text = QString::fromUtf8(code.text);
    TextStyle words{linear ? Typeface::Mono : Typeface::ChineseSans, linear ? 9.0 : 7.0};
    words.align = Qt::AlignHCenter;
    sheet.text(label.center().x(), label.bottom() - 2.6, text, words);
    return {QLatin1String(code.format), text, QRectF(at, size)};
}

} // namespace

FlatPage drawCodes(std::vector<CodeTruth>& truth)
{
    Sheet sheet(210, 297, QColor(252, 252, 252));
    sheet.text(18, 30, QStringLiteral("Labels of the week"), {Typeface::SansBold, 20, QColor(34, 38, 48)});
    sheet.text(
        18,
        38,
        QStringLiteral(
            "Every label carries one code. Cut along the lines and keep the margin around the code white."),
        {Typeface::Sans, 9.5, QColor(80, 84, 92)});
    truth.clear();
    for (const Code& code : codes)
        truth.push_back(drawLabel(sheet, code));
    return finish(sheet);
}

} // namespace deskpictures

#include "ZXingDecoder.h"

#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>

#include <optional>
#include <string>

namespace mirvak::helper {

namespace {

using ZXing::BarcodeFormat;

std::optional<Symbology> symbologyOf(BarcodeFormat format)
{
    switch (format) {
    case BarcodeFormat::EAN13:
        return Symbology::ean13;
    case BarcodeFormat::EAN8:
        return Symbology::ean8;
    case BarcodeFormat::UPCA:
        return Symbology::upca;
    case BarcodeFormat::UPCE:
        return Symbology::upce;
    case BarcodeFormat::Code39:
        return Symbology::code39;
    case BarcodeFormat::Code93:
        return Symbology::code93;
    case BarcodeFormat::Code128:
        return Symbology::code128;
    case BarcodeFormat::ITF:
        return Symbology::itf;
    case BarcodeFormat::Codabar:
        return Symbology::codabar;
    case BarcodeFormat::QRCode:
        return Symbology::qr;
    case BarcodeFormat::MicroQRCode:
        return Symbology::microQr;
    case BarcodeFormat::DataMatrix:
        return Symbology::dataMatrix;
    case BarcodeFormat::Aztec:
        return Symbology::aztec;
    case BarcodeFormat::PDF417:
        return Symbology::pdf417;
    case BarcodeFormat::MaxiCode:
        return Symbology::maxiCode;
    default:
        return std::nullopt;
    }
}

void send(const ZXing::Result& result, const Answers& answers)
{
    const auto symbology = symbologyOf(result.format());
    if (!result.isValid() || !symbology)
        return;
    Reading reading{};
    reading.symbology = *symbology;
    reading.agreeing = result.lineCount();
    size_t at = 0;
    for (const ZXing::PointI& corner : result.position()) {
        reading.points[at++] = corner.x;
        reading.points[at++] = corner.y;
    }
    // Only a code that names its character set is believed; the guess for the others is made in one place.
    reading.isText = result.hasECI() || *symbology == Symbology::maxiCode;
    const ZXing::ByteArray& bytes = result.bytes();
    const std::string text = reading.isText ? result.text() : std::string(bytes.begin(), bytes.end());
    answers.code(reading, text);
}

void read(const Picture& picture, const ZXing::DecodeHints& hints, const Answers& answers)
{
    const ZXing::ImageView view(picture.pixels, picture.width, picture.height, ZXing::ImageFormat::Lum);
    for (const ZXing::Result& result : ZXing::ReadBarcodes(view, hints))
        send(result, answers);
}

} // namespace

void readMatrices(const Picture& picture, bool evenly, const Answers& answers)
{
    ZXing::DecodeHints hints;
    hints.setFormats(BarcodeFormat::MatrixCodes);
    hints.setBinarizer(evenly ? ZXing::Binarizer::GlobalHistogram : ZXing::Binarizer::LocalAverage);
    hints.setTryDownscale(false);
    read(picture, hints, answers);
}

void readOneBar(const Picture& picture, const Answers& answers)
{
    ZXing::DecodeHints hints;
    hints.setFormats(BarcodeFormat::Codabar | BarcodeFormat::Code39 | BarcodeFormat::Code93 |
                     BarcodeFormat::Code128 | BarcodeFormat::EAN8 | BarcodeFormat::EAN13 |
                     BarcodeFormat::ITF | BarcodeFormat::UPCA | BarcodeFormat::UPCE);
    hints.setTryDownscale(false);
    hints.setReturnCodabarStartEnd(true);
    hints.setMaxNumberOfSymbols(1);
    read(picture, hints, answers);
}

} // namespace mirvak::helper

#include "ZBarDecoder.h"

#include <zbar.h>

#include <algorithm>
#include <climits>
#include <optional>

namespace mirvak::helper {

namespace {

std::optional<Symbology> symbologyOf(zbar::zbar_symbol_type_t type)
{
    switch (type) {
    case zbar::ZBAR_EAN13:
        return Symbology::ean13;
    case zbar::ZBAR_EAN8:
        return Symbology::ean8;
    case zbar::ZBAR_UPCA:
        return Symbology::upca;
    case zbar::ZBAR_UPCE:
        return Symbology::upce;
    case zbar::ZBAR_CODE39:
        return Symbology::code39;
    case zbar::ZBAR_CODE93:
        return Symbology::code93;
    case zbar::ZBAR_CODE128:
        return Symbology::code128;
    case zbar::ZBAR_I25:
        return Symbology::itf;
    case zbar::ZBAR_CODABAR:
        return Symbology::codabar;
    case zbar::ZBAR_DATABAR:
        return Symbology::dataBar;
    case zbar::ZBAR_DATABAR_EXP:
        return Symbology::dataBarExpanded;
    case zbar::ZBAR_QRCODE:
        return Symbology::qr;
    default:
        return std::nullopt;
    }
}

// The upright rectangle around the points at which scan lines met the code, as four corners.
std::array<std::int32_t, 8> pointsOf(const zbar::zbar_symbol_t* symbol)
{
    int left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;
    for (unsigned i = 0; i < zbar::zbar_symbol_get_loc_size(symbol); ++i) {
        left = std::min(left, zbar::zbar_symbol_get_loc_x(symbol, i));
        right = std::max(right, zbar::zbar_symbol_get_loc_x(symbol, i));
        top = std::min(top, zbar::zbar_symbol_get_loc_y(symbol, i));
        bottom = std::max(bottom, zbar::zbar_symbol_get_loc_y(symbol, i));
    }
    if (left > right)
        left = right = top = bottom = 0;
    return {left, top, right, top, right, bottom, left, bottom};
}

struct FreeImage
{
    void operator()(zbar::zbar_image_t* image) const { zbar::zbar_image_destroy(image); }
};

} // namespace

struct ZBarDecoder::Scanner
{
    zbar::zbar_image_scanner_t* handle = zbar::zbar_image_scanner_create();
    Scanner() = default;
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;
    ~Scanner() { zbar::zbar_image_scanner_destroy(handle); }
    void set(zbar::zbar_symbol_type_t type, zbar::zbar_config_t config, int value)
    {
        zbar::zbar_image_scanner_set_config(handle, type, config, value);
    }
};

ZBarDecoder::ZBarDecoder() : scanner_(std::make_unique<Scanner>())
{
    // Everything that symbologyOf() knows and no more: add-ons of two and five digits read themselves into
    // other codes.
    scanner_->set(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
    for (int type = 0; type <= zbar::ZBAR_CODE128; ++type) {
        if (symbologyOf(static_cast<zbar::zbar_symbol_type_t>(type)))
            scanner_->set(static_cast<zbar::zbar_symbol_type_t>(type), zbar::ZBAR_CFG_ENABLE, 1);
    }
    scanner_->set(zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_BINARY, 1);
}

ZBarDecoder::~ZBarDecoder() = default;

void ZBarDecoder::read(const Picture& picture, int step, const Answers& answers)
{
    const auto width = static_cast<unsigned>(picture.width), height = static_cast<unsigned>(picture.height);
    const std::unique_ptr<zbar::zbar_image_t, FreeImage> image(zbar::zbar_image_create());
    zbar::zbar_image_set_format(image.get(), zbar_fourcc('Y', '8', '0', '0'));
    zbar::zbar_image_set_size(image.get(), width, height);
    zbar::zbar_image_set_data(image.get(), picture.pixels, size_t(width) * height, nullptr);
    scanner_->set(zbar::ZBAR_NONE, zbar::ZBAR_CFG_X_DENSITY, step);
    scanner_->set(zbar::ZBAR_NONE, zbar::ZBAR_CFG_Y_DENSITY, step);
    if (zbar::zbar_scan_image(scanner_->handle, image.get()) <= 0)
        return;
    for (const zbar::zbar_symbol_t* symbol = zbar::zbar_image_first_symbol(image.get()); symbol;
         symbol = zbar::zbar_symbol_next(symbol)) {
        const auto symbology = symbologyOf(zbar::zbar_symbol_get_type(symbol));
        if (!symbology)
            continue;
        Reading reading{};
        reading.symbology = *symbology;
        reading.byZBar = 1;
        reading.agreeing = zbar::zbar_symbol_get_quality(symbol);
        reading.points = pointsOf(symbol);
        answers.code(reading,
                     {zbar::zbar_symbol_get_data(symbol), zbar::zbar_symbol_get_data_length(symbol)});
    }
}

} // namespace mirvak::helper

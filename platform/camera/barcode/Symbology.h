#pragma once

#include <cstdint>

namespace mirvak {

/// The kinds of codes that are read.
enum class Symbology : std::uint8_t {
    ean13,
    ean8,
    upca,
    upce,
    code39,
    code93,
    code128,
    itf,
    codabar,
    dataBar,
    dataBarExpanded,
    qr,
    microQr,
    dataMatrix,
    aztec,
    pdf417,
    maxiCode,
};
constexpr auto lastSymbology = Symbology::maxiCode;

/// Bars in one direction; the others are made of squares, dots or stacked rows and correct their own errors.
constexpr bool isLinear(Symbology symbology)
{
    return symbology <= Symbology::dataBarExpanded;
}

/// Trade numbers with one check digit of ten.
constexpr bool isGtin(Symbology symbology)
{
    return symbology <= Symbology::upce;
}

/// Every code of the kind has characters by which a misreading shows.
constexpr bool testsItself(Symbology symbology)
{
    return symbology != Symbology::code39 && symbology != Symbology::itf && symbology != Symbology::codabar;
}

} // namespace mirvak

#include "CodeRules.h"

#include <algorithm>

namespace mirvak {

namespace {

// The last digit makes the sum of the digits, weighted 3 and 1 from the right, a multiple of ten.
bool hasGtinCheckDigit(std::string_view digits)
{
    int sum = 0, weight = 1;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, weight = 4 - weight) {
        if (*digit < '0' || *digit > '9')
            return false;
        sum += (*digit - '0') * weight;
    }
    return sum % 10 == 0;
}

} // namespace

bool isPlausible(Symbology symbology, std::string_view bytes)
{
    switch (symbology) {
    case Symbology::ean13:
        return bytes.size() == 13 && hasGtinCheckDigit(bytes);
    case Symbology::ean8:
        return bytes.size() == 8 && hasGtinCheckDigit(bytes);
    case Symbology::upca:
        return bytes.size() == 12 && hasGtinCheckDigit(bytes);
    case Symbology::upce:
        return bytes.size() == 8; // its check digit is that of the long form, which the decoder has tested
    case Symbology::itf:
    case Symbology::codabar: // two of them are the start and the stop
        return bytes.size() >= 6;
    case Symbology::code39:
        return bytes.size() >= 3;
    case Symbology::code93:
    case Symbology::code128:
        return bytes.size() >= 2;
    default:
        return !bytes.empty();
    }
}

int linesNeeded(Symbology symbology)
{
    return isLinear(symbology) ? 3 : 0;
}

int passesNeeded(Symbology symbology)
{
    return isLinear(symbology) ? 2 : 1;
}

} // namespace mirvak

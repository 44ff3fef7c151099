#pragma once

#include <array>
#include <string_view>

namespace mirvak {

/// USB identities (vendor, product; 8 lowercase hexadecimal digits) of the models that can flatten book
/// pages. The order and the two doubled entries belong to the list.
constexpr std::array<std::string_view, 78> bookFlatModels = {
    "04b400c3", "0b5766da", "0b5766db", "0b5766dd", "0b5766de", "0b5766d5", "0b5766d0", "0b5766d1",
    "0b5766e0", "0b5766e1", "0b5766e2", "0b5766e4", "0c451604", "0c452000", "4b16280a", "4b16280b",
    "4b16280c", "66d50b57", "1b171500", "1b171501", "1b171502", "1b171503", "1b171505", "1b171506",
    "1b171507", "1b171508", "1b171509", "1b171511", "1b171600", "1b171800", "1b171801", "1b171803",
    "1b171807", "1b171811", "1b1718a2", "1b172000", "1b172001", "1b172002", "1b172003", "1b172004",
    "1b172005", "1b172007", "1b172200", "1b172220", "1b172222", "1b172223", "1b172500", "1b172501",
    "1b172502", "1b172504", "1b172510", "1b172600", "1b172601", "1b172700", "1b172701", "1b172800",
    "1b172801", "1b172802", "1b173000", "1b173001", "1b175500", "1b17ff00", "2b190200", "34fa004f",
    "34fa0050", "34fa0051", "34fa0052", "34fa0053", "5b16080c", "1b175158", "1b172223", "1b172200",
    "1b172503", "1b171504", "0c456366", "63660c45", "1b171810", "4b16680d"};

/// Case-sensitive comparison of the whole identity.
constexpr bool isBookFlatModel(std::string_view usbId)
{
    for (const std::string_view model : bookFlatModels) {
        if (model == usbId)
            return true;
    }
    return false;
}

} // namespace mirvak

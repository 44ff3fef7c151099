#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace idcard {

/// What may stand on a card. Gender is a digit; dates are yyyymmdd, or a word for a validity without end.
enum class Field {
    name,
    otherName, ///< of a foreigner: the Chinese one
    gender,
    nation, ///< two digits; of a foreigner the letters of the country
    birth,
    address,
    number,
    authority,
    from,
    to,
    passNumber,
    issues, ///< how often it was issued
    version,
    category,
};

/// UTF-8. A field that is not there has no entry.
using Texts = std::map<Field, std::string>;

/// A card that has been read.
struct Card
{
    int type = 0;
    Texts texts;
    std::filesystem::path picture; ///< of the portrait: JPEG, PNG or BMP; empty where there is none
};

/// In which order a card of that type tells its texts; empty for types that are not known.
const std::vector<Field>& fieldsOf(int type);

} // namespace idcard

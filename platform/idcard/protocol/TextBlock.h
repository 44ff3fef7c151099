#pragma once

#include "Card.h"
#include "CardFrame.h"

#include <optional>

namespace idcard {

constexpr size_t textBlockBytes = 256;

/// Who has such a card; a letter in the block tells.
enum class CardKind {
    resident,
    foreign,  ///< permanent residence of a foreigner, letter I
    residence ///< of somebody from Hong Kong, Macao or Taiwan, letter J
};

struct TextBlock
{
    CardKind kind = CardKind::resident;
    Texts texts;
};

/// Takes the 256 bytes apart: fields of fixed widths, UTF-16 with the low byte first, padded with blanks.
/// What is no character becomes U+FFFD, control characters become blanks. A field that holds nothing but
/// blanks is empty. @return nothing for another number of bytes
std::optional<TextBlock> decodeTextBlock(const Bytes& block);

} // namespace idcard

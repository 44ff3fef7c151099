#pragma once

#include <QString>

#include <array>

/// The seventeen functions in the order of their bits in the button mask.
namespace functionButtons {

constexpr int count = 17;
constexpr int defaultMask = 0xCDEF; ///< bit i set: function i is shown

/// Base names of the icons.
inline constexpr std::array<const char*, count> identifiers{"capture",
                                                            "document",
                                                            "barcode",
                                                            "synthesis",
                                                            "CardSynthesis",
                                                            "videocapture",
                                                            "continuousShooting",
                                                            "OCR",
                                                            "IDCardReader",
                                                            "print",
                                                            "PDF",
                                                            "PdfEx",
                                                            "sign",
                                                            "fingerprint",
                                                            "bookscan",
                                                            "FaceVerify",
                                                            "Laohua"};

/// What function `index` (0 to 16) is called in the user's language, for tool tips and screen readers.
QString caption(int index);

} // namespace functionButtons

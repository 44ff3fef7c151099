#pragma once

#include <map>
#include <string>
#include <vector>

class QPDF;
class QPDFObjectHandle;

namespace mirvak {

/// The letters that a document's invisible text uses. Each gets a code of its own in the order of its first
/// use, and with that its Unicode value and width are known.
class PdfGlyphs
{
public:
    struct Codes
    {
        std::string hex; ///< two bytes each, as hexadecimal digits
        double ems = 0;  ///< their width
    };
    /// What cannot be part of a text (controls, no UTF-8) is left out, and so is what comes after the 65535th
    /// different letter.
    Codes codesOf(const std::string& utf8);

    bool isEmpty() const { return letters_.empty(); }
    /// The font dictionary: a composite font without outlines (ISO 32000-1, 9.7), embedded.
    QPDFObjectHandle font(QPDF& pdf) const;

private:
    int codeOf(char32_t letter);

    std::map<char32_t, int> codes_;
    std::vector<char32_t> letters_; ///< by code, from 1
};

} // namespace mirvak

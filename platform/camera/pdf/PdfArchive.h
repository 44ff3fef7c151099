#pragma once

#include <string>

class QPDF;

namespace mirvak {

/// Who made the file, what it is called, when it was made.
struct PdfAbout
{
    std::string producer; ///< UTF-8, as title
    std::string title;    ///< empty: none
    std::string pdfTime;  ///< the same moment in both forms: "D:20250102030405+01'00'"
    std::string isoTime;  ///< "2025-01-02T03:04:05+01:00"
};

/// Makes a document of pictures and embedded fonts one of PDF/A-2b (ISO 19005-2): says so in its metadata
/// (XMP, ISO 16684-1, in agreement with the information dictionary) and says what its colours mean.
void makeArchival(QPDF& pdf, const PdfAbout& about);

} // namespace mirvak

#pragma once

#include "PdfPicture.h"
#include "PdfSheet.h"
#include "PdfText.h"
#include "PictureFile.h"

#include <functional>
#include <string>
#include <vector>

namespace mirvak {

class AtomicFile;

/// A picture that will fill one page.
struct PdfPage
{
    std::string path; ///< UTF-8
    FileState state;  ///< of the file when the picture was examined
    PdfPicture picture;
    PdfWords words{}; ///< in reading order; none: the page is only a picture
};

/// How the document is made of its pages.
struct PdfOptions
{
    PdfSheetKind sheet = PdfSheetKind::ownSize;
    bool isArchival = false; ///< conforms to PDF/A-2b (ISO 19005-2)
    std::string title;       ///< UTF-8; empty: none
};

/// Told before each page how many of how many are done, and at the end that all are; false: stop.
using PdfWatch = std::function<bool(int done, int count)>;

/// The writing was stopped by its watch.
struct PdfStopped
{
};

/// Writes the pages, in order, as a PDF (ISO 32000-1) with compressed objects. Each file is read when its
/// turn comes, so that no more than one of them is in memory. Throws std::runtime_error when a file is not as
/// it was, PdfStopped when `goesOn` (which may be empty) says no; `out` knows when it has failed itself. In
/// all cases what was written is to be thrown away.
void writePdf(std::vector<PdfPage> pages, const PdfOptions& options, AtomicFile& out, const PdfWatch& goesOn);

} // namespace mirvak

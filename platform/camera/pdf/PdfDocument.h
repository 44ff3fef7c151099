#pragma once

#include "PdfPicture.h"
#include "PictureFile.h"

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
};

/// Writes the pages, in order, as a PDF (ISO 32000-1) with compressed objects. Each file is read when its
/// turn comes, so that no more than one of them is in memory. Throws std::runtime_error when a file is not as
/// it was; `out` knows when it has failed itself. In both cases what was written is to be thrown away.
void writePdf(const std::vector<PdfPage>& pages, AtomicFile& out);

} // namespace mirvak

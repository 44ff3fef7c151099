#pragma once

#include "PdfDocument.h"

namespace mirvak {

/// Collects pictures and writes them as one PDF. What goes wrong is said in one line on standard error. One
/// thread at a time.
class PdfPages
{
public:
    enum class Result {
        ok,
        badPicture, ///< no JPEG, PNG or BMP, broken, cut short or too large; nothing was added
        ioError,    ///< a file cannot be read, is not as it was when it was added, or cannot be written
        nameTaken,  ///< a file of that name is never replaced
        noPages,
        stopped, ///< as was wished; there is no file
    };

    /// Looks at the picture and remembers it as the next page. `path` in UTF-8.
    Result add(const std::string& path);
    /// Words that lie invisibly over the page that was added last, in place of those before.
    /// @return noPages when there is none
    Result setWords(PdfWords words);
    /// Writes the remembered pages and forgets them, whatever comes of it. The file is a new one and appears
    /// under its name only when it is complete and synced.
    /// Stops without one when `goesOn` says no.
    Result save(const std::string& path, const PdfOptions& options = {}, const PdfWatch& goesOn = {});

private:
    std::vector<PdfPage> pages_;
};

} // namespace mirvak

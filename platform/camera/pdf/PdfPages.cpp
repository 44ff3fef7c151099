#include "PdfPages.h"

#include "AtomicFile.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

namespace mirvak {

PdfPages::Result PdfPages::add(const std::string& path)
try {
    const PictureFile file = PictureFile::read(path);
    std::optional<PdfPicture> picture = PdfPicture::examine(file.bytes);
    if (!picture) {
        std::fprintf(stderr, "PDF page: %s: no JPEG, PNG or BMP picture, or a broken one\n", path.c_str());
        return Result::badPicture;
    }
    pages_.push_back({path, file.state, std::move(*picture)});
    return Result::ok;
} catch (const std::runtime_error& error) {
    std::fprintf(stderr, "PDF page: %s\n", error.what());
    return Result::ioError;
}

PdfPages::Result PdfPages::setWords(PdfWords words)
{
    if (pages_.empty())
        return Result::noPages;
    pages_.back().words = std::move(words);
    return Result::ok;
}

PdfPages::Result PdfPages::save(const std::string& path, const PdfOptions& options, const PdfWatch& goesOn)
{
    std::vector<PdfPage> pages = std::exchange(pages_, {});
    if (pages.empty()) {
        std::fprintf(stderr, "PDF: %s: there are no pages\n", path.c_str());
        return Result::noPages;
    }
    AtomicFile file(path, IfTaken::refuse);
    if (file.failed())
        return Result::ioError;
    try {
        writePdf(std::move(pages), options, file, goesOn);
    } catch (const PdfStopped&) {
        return Result::stopped;
    } catch (const std::runtime_error& error) {
        if (!file.failed()) // it has told its own trouble
            std::fprintf(stderr, "PDF: %s was not written: %s\n", path.c_str(), error.what());
        return Result::ioError;
    }
    switch (file.commit()) {
    case AtomicFile::Commit::done:
        return Result::ok;
    case AtomicFile::Commit::taken:
        return Result::nameTaken;
    case AtomicFile::Commit::failed:
        break;
    }
    return Result::ioError;
}

} // namespace mirvak

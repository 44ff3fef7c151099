#include "mirvakocr.h"

#include "AtomicFile.h"
#include "DocumentBuilder.h"
#include "PageReader.h"
#include "RtfWriter.h"

#include <atomic>
#include <cstdio>
#include <exception>
#include <mutex>
#include <new>
#include <optional>

using mirvak::Reading;

namespace {

struct Outcome
{
    MirvakOCRResult result;
    const char* words;
};

Outcome outcomeOf(Reading reading)
{
    switch (reading) {
    case Reading::ok:
        return {MIRVAK_OCR_OK, "read"};
    case Reading::noPicture:
        return {MIRVAK_OCR_BAD_PICTURE, "the file is missing or no picture"};
    case Reading::noModel:
        return {MIRVAK_OCR_NO_MODEL, "no model can be used"};
    case Reading::noText:
        return {MIRVAK_OCR_NO_TEXT, "no text was found"};
    case Reading::late:
        break;
    }
    return {MIRVAK_OCR_TIMEOUT, "given up, or stopped"};
}

int failed(const char* call, const char* path, MirvakOCRResult result, const char* why)
{
    std::fprintf(stderr, "%s: %s%s%s (%d)\n", call, path ? path : "", path ? ": " : "", why, result);
    return result;
}

// No exception leaves the library.
template <class Call> int guarded(const char* name, const char* path, Call&& call) noexcept
{
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return failed(name, path, MIRVAK_OCR_NO_MEMORY, "out of memory");
    } catch (const std::exception& error) {
        return failed(name, path, MIRVAK_OCR_BAD_PICTURE, error.what());
    }
}

} // namespace

struct MirvakOCR::Impl
{
    std::atomic<bool> stopped{false}; ///< a recognition that runs is to end
    std::mutex mutex;                 ///< of the two below
    std::unique_ptr<mirvak::Models> models;
    std::optional<mirvak::Document> document;
};

MirvakOCR::MirvakOCR() : impl_(std::make_unique<Impl>()) {}

MirvakOCR::~MirvakOCR() = default;

int MirvakOCR::MirvakOCR_Init(const char* modelDirectory)
{
    constexpr const char* call = "MirvakOCR_Init";
    return guarded(call, modelDirectory, [&] {
        MirvakOCR_Deinit();
        const std::lock_guard lock(impl_->mutex);
        if (!modelDirectory || !*modelDirectory)
            return failed(call, modelDirectory, MIRVAK_OCR_BAD_ARGUMENT, "no directory");
        auto models = std::make_unique<mirvak::Models>(modelDirectory);
        if (models->languages().empty())
            return failed(call, modelDirectory, MIRVAK_OCR_NO_MODEL, "holds no language");
        impl_->models = std::move(models);
        impl_->stopped = false;
        return static_cast<int>(MIRVAK_OCR_OK);
    });
}

int MirvakOCR::MirvakOCR_Discern(const char* imagePath)
{
    constexpr const char* call = "MirvakOCR_Discern";
    return guarded(call, imagePath, [&] {
        const std::lock_guard lock(impl_->mutex);
        impl_->document.reset();
        if (!imagePath || !*imagePath)
            return failed(call, imagePath, MIRVAK_OCR_BAD_ARGUMENT, "no picture");
        if (!impl_->models)
            return failed(call, imagePath, MIRVAK_OCR_NOT_READY, "MirvakOCR_Init has not succeeded");
        mirvak::ReadPage page;
        mirvak::PageReader reader(*impl_->models, impl_->stopped);
        const Outcome outcome = outcomeOf(reader.read(imagePath, page));
        if (outcome.result != MIRVAK_OCR_OK)
            return failed(call, imagePath, outcome.result, outcome.words);
        mirvak::TextModel* model = impl_->models->get(page.language);
        impl_->document =
            mirvak::buildDocument(page, [&](const std::string& word) { return model && model->knows(word); });
        return static_cast<int>(MIRVAK_OCR_OK);
    });
}

int MirvakOCR::MirvakOCR_Save(const char* rtfPath)
{
    constexpr const char* call = "MirvakOCR_Save";
    return guarded(call, rtfPath, [&] {
        const std::lock_guard lock(impl_->mutex);
        if (!rtfPath || !*rtfPath)
            return failed(call, rtfPath, MIRVAK_OCR_BAD_ARGUMENT, "no path");
        if (!impl_->document)
            return failed(call, rtfPath, MIRVAK_OCR_NOT_READY, "nothing was recognised");
        const std::string rtf = mirvak::toRtf(*impl_->document);
        mirvak::AtomicFile file(rtfPath);
        const bool written = file.write(rtf.data(), rtf.size()) && file.commit();
        return static_cast<int>(written ? MIRVAK_OCR_OK : MIRVAK_OCR_IO_ERROR);
    });
}

int MirvakOCR::MirvakOCR_Deinit()
{
    impl_->stopped = true;
    const std::lock_guard lock(impl_->mutex);
    impl_->document.reset();
    impl_->models.reset();
    return MIRVAK_OCR_OK;
}

#include "mirvakocr.h"

#include "AtomicFile.h"
#include "LoadModule.h"
#include "OcrModule.h"
#include "RtfWriter.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <exception>
#include <iterator>
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

MirvakOCRResult resultOf(mirvak::AtomicFile::Commit commit)
{
    switch (commit) {
    case mirvak::AtomicFile::Commit::done:
        return MIRVAK_OCR_OK;
    case mirvak::AtomicFile::Commit::taken:
        return MIRVAK_OCR_EXISTS;
    case mirvak::AtomicFile::Commit::failed:
        break;
    }
    return MIRVAK_OCR_IO_ERROR;
}

int failed(const char* call, const char* path, MirvakOCRResult result, const char* why)
{
    std::fprintf(stderr, "%s: %s%s%s (%d)\n", call, path ? path : "", path ? ": " : "", why, result);
    return result;
}

std::unique_ptr<mirvak::OcrModule> loadModule()
{
    static const auto make = reinterpret_cast<mirvak::MakeOcrModule>(
        mirvak::functionOfModule("ocr", mirvak::ocrModuleFile, mirvak::makeOcrModuleName));
    return std::unique_ptr<mirvak::OcrModule>(make ? make() : nullptr);
}

MirvakOCRWord wordOf(const mirvak::PlacedWord& placed)
{
    MirvakOCRWord word;
    word.text = placed.text;
    std::transform(
        placed.corners.begin(), placed.corners.end(), word.corners, [](const mirvak::Place& corner) {
            return MirvakOCRPoint{static_cast<float>(corner.x), static_cast<float>(corner.y)};
        });
    word.confidence = placed.confidence;
    word.block = placed.block;
    word.line = placed.line;
    word.isSpaceBehind = placed.isSpaceBehind;
    return word;
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
    mirvak::Watch watch; ///< of the recognition that runs
    std::atomic<bool> hasBegun{false};
    std::atomic<bool> marksUnsure{true};
    std::mutex mutex; ///< of the two below
    std::unique_ptr<mirvak::OcrModule> module;
    std::optional<mirvak::PageText> text;
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
        auto module = loadModule();
        if (!module)
            return failed(call, nullptr, MIRVAK_OCR_NOT_READY, "the recogniser cannot be loaded");
        if (!module->setModels(modelDirectory))
            return failed(call, modelDirectory, MIRVAK_OCR_NO_MODEL, "holds no language");
        impl_->module = std::move(module);
        impl_->watch.stopped = false;
        impl_->hasBegun = false;
        return static_cast<int>(MIRVAK_OCR_OK);
    });
}

int MirvakOCR::MirvakOCR_Discern(const char* imagePath)
{
    constexpr const char* call = "MirvakOCR_Discern";
    return guarded(call, imagePath, [&] {
        const std::lock_guard lock(impl_->mutex);
        impl_->text.reset();
        if (!imagePath || !*imagePath)
            return failed(call, imagePath, MIRVAK_OCR_BAD_ARGUMENT, "no picture");
        if (!impl_->module)
            return failed(call, imagePath, MIRVAK_OCR_NOT_READY, "MirvakOCR_Init has not succeeded");
        impl_->watch.percent = 0;
        impl_->hasBegun = true;
        mirvak::PageText text;
        const Outcome outcome = outcomeOf(impl_->module->read(imagePath, impl_->watch, text));
        if (outcome.result != MIRVAK_OCR_OK)
            return failed(call, imagePath, outcome.result, outcome.words);
        impl_->watch.percent = 100;
        impl_->text = std::move(text);
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
        if (!impl_->text)
            return failed(call, rtfPath, MIRVAK_OCR_NOT_READY, "nothing was recognised");
        const auto unsure = impl_->marksUnsure ? mirvak::Unsure::highlighted : mirvak::Unsure::plain;
        const std::string rtf = mirvak::toRtf(impl_->text->document, unsure);
        mirvak::AtomicFile file(rtfPath, mirvak::IfTaken::refuse);
        file.write(rtf.data(), rtf.size());
        return static_cast<int>(resultOf(file.commit()));
    });
}

int MirvakOCR::MirvakOCR_MarkUnsure(bool on)
{
    impl_->marksUnsure = on;
    return MIRVAK_OCR_OK;
}

int MirvakOCR::MirvakOCR_GetProgress(int& percent) const
{
    percent = impl_->watch.percent;
    return impl_->hasBegun ? MIRVAK_OCR_OK : MIRVAK_OCR_NOT_READY;
}

int MirvakOCR::MirvakOCR_GetWords(std::vector<MirvakOCRWord>& words, int& width, int& height) const
{
    constexpr const char* call = "MirvakOCR_GetWords";
    words.clear();
    return guarded(call, nullptr, [&] {
        const std::lock_guard lock(impl_->mutex);
        if (!impl_->text)
            return failed(call, nullptr, MIRVAK_OCR_NOT_READY, "nothing was recognised");
        const mirvak::PlacedWords& placed = impl_->text->placed;
        width = placed.width;
        height = placed.height;
        words.reserve(placed.words.size());
        std::transform(placed.words.begin(), placed.words.end(), std::back_inserter(words), wordOf);
        return static_cast<int>(MIRVAK_OCR_OK);
    });
}

int MirvakOCR::MirvakOCR_Stop()
{
    impl_->watch.stopped = true;
    return MIRVAK_OCR_OK;
}

int MirvakOCR::MirvakOCR_Deinit()
{
    MirvakOCR_Stop();
    const std::lock_guard lock(impl_->mutex);
    impl_->text.reset();
    impl_->module.reset();
    return MIRVAK_OCR_OK;
}

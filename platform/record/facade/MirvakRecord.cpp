#include "mirvakrecord.h"

#include "LoadModule.h"
#include "RecordModule.h"

#include <atomic>
#include <cstdio>
#include <exception>
#include <new>

namespace {

constexpr int smallestSide = 16, largestSide = 4096;
constexpr int mostFramesPerSecond = 60;
constexpr int modeRgb = 2;

std::unique_ptr<mirvak::RecordModule> loadModule()
{
    static const auto make = reinterpret_cast<mirvak::MakeRecordModule>(
        mirvak::functionOfModule("record", mirvak::recordModuleFile, mirvak::makeRecordModuleName));
    return std::unique_ptr<mirvak::RecordModule>(make ? make() : nullptr);
}

int failed(const char* call, MirvakRecordResult result, const char* why)
{
    std::fprintf(stderr, "%s: %s (%d)\n", call, why, result);
    return result;
}

// No exception leaves the library.
template <class Call> int guarded(const char* name, Call&& call) noexcept
{
    try {
        return call();
    } catch (const std::exception& error) { // no memory, or no thread to be had
        return failed(name, MIRVAK_RECORD_NO_MEMORY, error.what());
    }
}

bool isSide(int pixels)
{
    return pixels >= smallestSide && pixels <= largestSide;
}

} // namespace

struct MirvakRecord::Impl
{
    std::unique_ptr<mirvak::RecordModule> owned;
    std::atomic<mirvak::RecordModule*> module{nullptr}; ///< the same, for the other threads
};

MirvakRecord::MirvakRecord() : impl_(std::make_unique<Impl>()) {}

MirvakRecord::~MirvakRecord() = default;

int MirvakRecord::MirvakRecord_Start(
    const char* path, int width, int height, int framesPerSecond, int mode, int flags)
{
    constexpr const char* call = "MirvakRecord_Start";
    return guarded(call, [&] {
        const bool isRate = framesPerSecond >= 1 && framesPerSecond <= mostFramesPerSecond;
        if (!path || !*path || !isSide(width) || !isSide(height) || !isRate || mode != modeRgb || flags != 0)
            return failed(call, MIRVAK_RECORD_BAD_ARGUMENT, "bad argument");
        if (!impl_->owned) {
            impl_->owned = loadModule();
            impl_->module = impl_->owned.get();
        }
        if (!impl_->owned)
            return failed(call, MIRVAK_RECORD_NO_ENCODER, "the encoder cannot be loaded");
        const MirvakRecordResult result = impl_->owned->start(path, width, height, framesPerSecond);
        if (result == MIRVAK_RECORD_BUSY)
            return failed(call, result, "a recording runs");
        return static_cast<int>(result);
    });
}

int MirvakRecord::MirvakRecord_Write(const unsigned char* rgb, int byteCount)
{
    return guarded("MirvakRecord_Write", [&] {
        if (!rgb)
            return static_cast<int>(MIRVAK_RECORD_BAD_ARGUMENT);
        mirvak::RecordModule* module = impl_->module;
        const size_t bytes = byteCount > 0 ? static_cast<size_t>(byteCount) : 0;
        return static_cast<int>(module ? module->write(rgb, bytes) : MIRVAK_RECORD_NOT_RECORDING);
    });
}

int MirvakRecord::MirvakRecord_WriteScaled(const unsigned char* rgb, int byteCount, int width, int height)
{
    return guarded("MirvakRecord_WriteScaled", [&] {
        if (!rgb)
            return static_cast<int>(MIRVAK_RECORD_BAD_ARGUMENT);
        mirvak::RecordModule* module = impl_->module;
        const size_t bytes = byteCount > 0 ? static_cast<size_t>(byteCount) : 0;
        return static_cast<int>(module ? module->write(rgb, bytes, width, height)
                                       : MIRVAK_RECORD_NOT_RECORDING);
    });
}

int MirvakRecord::MirvakRecord_Stop()
{
    constexpr const char* call = "MirvakRecord_Stop";
    return guarded(call, [&] {
        const MirvakRecordResult result = impl_->owned ? impl_->owned->stop() : MIRVAK_RECORD_NOT_RECORDING;
        if (result == MIRVAK_RECORD_NOT_RECORDING)
            return failed(call, result, "nothing is recorded");
        if (result == MIRVAK_RECORD_NO_FRAME)
            return failed(call, result, "no frame came");
        return static_cast<int>(result);
    });
}

int MirvakRecord::MirvakRecord_GetCounts(int& written, int& repeated, int& dropped) const
{
    return guarded("MirvakRecord_GetCounts", [&] {
        mirvak::RecordCounts counts;
        const mirvak::RecordModule* module = impl_->module;
        const int result = module ? module->counts(counts) : MIRVAK_RECORD_NOT_RECORDING;
        written = counts.written;
        repeated = counts.repeated;
        dropped = counts.dropped;
        return result;
    });
}

int MirvakRecord::MirvakRecord_GetLength(int& milliseconds) const
{
    return guarded("MirvakRecord_GetLength", [&] {
        std::chrono::milliseconds length(0);
        const mirvak::RecordModule* module = impl_->module;
        const int result = module ? module->length(length) : MIRVAK_RECORD_NOT_RECORDING;
        milliseconds = static_cast<int>(length.count());
        return result;
    });
}

int MirvakRecord::MirvakRecord_GetCopying(int& percent) const
{
    return guarded("MirvakRecord_GetCopying", [&] {
        const mirvak::RecordModule* module = impl_->module;
        percent = module ? module->copyPercent() : -1;
        return static_cast<int>(percent < 0 ? MIRVAK_RECORD_NOT_RECORDING : MIRVAK_RECORD_OK);
    });
}

int MirvakRecord::MirvakRecord_StopCopying()
{
    return guarded("MirvakRecord_StopCopying", [&] {
        if (mirvak::RecordModule* module = impl_->module)
            module->stopCopying();
        return static_cast<int>(MIRVAK_RECORD_OK);
    });
}

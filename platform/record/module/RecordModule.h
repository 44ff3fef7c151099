#pragma once

#include "Schedule.h"
#include "mirvakrecord.h"

#include <string>

namespace mirvak {

/// The recorder as a module: its 145 libraries are loaded with the first recording and not with the program,
/// whose start they would delay by 34 milliseconds. Arguments have been checked. `start` and `stop` on one
/// thread, the others on any.
class RecordModule
{
public:
    virtual ~RecordModule() = default;
    virtual MirvakRecordResult start(const std::string& path, int width, int height, int framesPerSecond) = 0;
    virtual MirvakRecordResult write(const uint8_t* rgb, size_t bytes) = 0;
    virtual MirvakRecordResult write(const uint8_t* rgb, size_t bytes, int width, int height) = 0;
    virtual MirvakRecordResult stop() = 0;
    virtual MirvakRecordResult counts(RecordCounts& counts) const = 0;
    virtual MirvakRecordResult length(std::chrono::milliseconds& length) const = 0;
    virtual int copyPercent() const = 0; ///< -1: no film is being rewritten
    virtual void stopCopying() = 0;
};

/// Exported by the module; the caller owns the result.
using MakeRecordModule = RecordModule* (*)();
constexpr const char* recordModuleFile = "libmirvakrecord-engine.so";
constexpr const char* makeRecordModuleName = "makeRecordModule";

} // namespace mirvak

#pragma once

#include "Document.h"
#include "PlacedWords.h"
#include "Reading.h"
#include "Watch.h"

#include <string>

namespace mirvak {

/// What was read on a page: as a document, and word by word with its place.
struct PageText
{
    Document document;
    PlacedWords placed;
};

/// The recogniser as a module: its thirty libraries are loaded with the first recognition and not with the
/// program, whose start they would delay by five milliseconds. One thread at a time.
class OcrModule
{
public:
    virtual ~OcrModule() = default;
    /// Whether the directory holds models.
    virtual bool setModels(const std::string& directory) = 0;
    virtual Reading read(const std::string& picture, Watch& watch, PageText& text) = 0;
};

/// Exported by the module; the caller owns the result.
using MakeOcrModule = OcrModule* (*)();
constexpr const char* ocrModuleFile = "libmirvakocr-engine.so";
constexpr const char* makeOcrModuleName = "makeOcrModule";

} // namespace mirvak

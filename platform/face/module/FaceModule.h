#pragma once

#include "Descriptor.h"
#include "idfacesdk.h"

#include <string>

namespace face {

/// 24 bits a pixel, red green blue, rows without padding; borrowed for a call.
struct PictureView
{
    const unsigned char* rgb;
    int width, height;
};

/// The networks as a module: their 23 libraries are loaded with IdFaceSdkInit and not with the program. One
/// thread at a time. Any call may throw std::exception.
class FaceModule
{
public:
    virtual ~FaceModule() = default;
    /// Takes the weights from a folder; throws with the reason. Forgets what liveness remembers.
    virtual void begin(const std::string& weights) = 0;
    /// @return the number of faces; the largest goes into `face`, which is all zero without one
    virtual int find(const PictureView& picture, IdFaceInfo& face) = 0;
    /// `face` is one that find() has filled.
    virtual Descriptor describe(const PictureView& picture, const IdFaceInfo& face) = 0;
    /// 0 to 100, as IdFaceSdkLiveFaceDetect() has it.
    virtual int liveness(const PictureView& picture, const IdFaceInfo& face) = 0;
};

/// Exported by the module; the caller owns the result.
using MakeFaceModule = FaceModule* (*)();
constexpr const char* faceModuleFile = "libIdFaceSdk-engine.so";
constexpr const char* makeFaceModuleName = "makeFaceModule";

} // namespace face

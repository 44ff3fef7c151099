#include "FaceLibrary.h"

#include "idfacesdk.h"

#include <QCoreApplication>
#include <QDir>

namespace {

bool start()
{
    const QByteArray folder = (QCoreApplication::applicationDirPath() + QStringLiteral("/lib")).toUtf8();
    return IdFaceSdkInit(folder.constData(), QDir::tempPath().toUtf8().constData()) == ID_FACE_OK;
}

} // namespace

FaceLibrary::Run::Run(FaceLibrary& library) : lock_(library.mutex_)
{
    library.end(); // what liveness remembers of the live picture does not count
    isReady_ = start();
}

FaceLibrary::Run::~Run()
{
    IdFaceSdkUninit();
}

FaceLibrary::Place FaceLibrary::look(const unsigned char* rgb, int width, int height)
{
    const std::lock_guard lock(mutex_);
    if (!isStarted_ && !isUseless_) {
        isStarted_ = start();
        isUseless_ = !isStarted_;
    }
    IdFaceInfo face = {};
    if (!isStarted_ || IdFaceSdkDetectFace(rgb, width, height, &face) < 1)
        return {};
    return {true, face.left, face.top, face.width, face.height};
}

void FaceLibrary::rest()
{
    const std::lock_guard lock(mutex_);
    end();
}

/// Under the lock.
void FaceLibrary::end()
{
    if (isStarted_)
        IdFaceSdkUninit();
    isStarted_ = false;
}

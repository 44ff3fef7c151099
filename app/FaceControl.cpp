#include "FaceControl.h"

#include "AssistControl.h"
#include "CameraSession.h"
#include "MainDesk.h"

#include <utility>

void FaceControl::onFaceVerify()
{
    constexpr int colourCamera = 2;
    if (parts_.desk.isBusy())
        return;
    if (!window_) {
        window_ = new FaceVerify(nullptr, &parts_.camera);
        connect(window_, &FaceVerify::closefacesign, this, &FaceControl::drop);
    }
    if (window_->isVisible())
        return;
    const int index = rowOf(parts_.session.cameras(), parts_.session.current().identity);
    window_->SetMainIdx(index);
    if (!window_) // without a card reader it has gone
        return;
    parts_.assist.giveUp();
    window_->showMaximized();
    window_->SetOpenCamera(colourCamera, index);
}

/// It may be in the midst of closing.
void FaceControl::drop()
{
    if (FaceVerify* window = std::exchange(window_, nullptr)) {
        window->hide();
        window->deleteLater();
        closed_ = window;
    }
}

void FaceControl::finish()
{
    delete std::exchange(window_, nullptr);
    delete closed_.data(); // it knows the camera library, which goes too
}

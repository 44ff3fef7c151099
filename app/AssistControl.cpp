#include "AssistControl.h"

#include "CameraSession.h"
#include "CaptureDesk.h"
#include "CaptureProcessor.h"
#include "Dialogs.h"
#include "MoveVideoWidget.h"
#include "Settings.h"
#include "VideoView.h"

AssistControl::AssistControl(MirvakCamera& camera,
                             MirvakFrameCallback callback,
                             void* context,
                             CameraSession& session,
                             VideoView& view,
                             CaptureDesk& desk)
    : session_(session), view_(view), desk_(desk),
      second_(camera, callback, context, [this](const QImage& frame) { overlay_->SetMvDataFrame(frame); })
{
    connect(&second_, &SecondCamera::lost, this, [this] {
        giveUp();
        desk_.showNotice(tr("The second camera was disconnected."));
    });
    // A camera streams for one of the two only.
    connect(&session_, &CameraSession::opening, this, [this](const QString& identity) {
        if (second_.isOpen() && second_.identity() == identity)
            giveUp();
    });
}

AssistControl::~AssistControl()
{
    second_.stop();
}

bool AssistControl::isShown() const
{
    return overlay_ && overlay_->isVisible();
}

void AssistControl::onAssistCheacked(bool checked)
{
    second_.stop();
    if (!checked) {
        switchOff();
    } else if (settings::deskew.read() != cropping::none) {
        Dialogs::instance().information(view_.window(),
                                        tr("Tips"),
                                        tr("Please turn off the deskew function before using it again!"),
                                        QMessageBox::Yes);
        view_.SetAssistChecked(false);
    } else {
        switchOn();
    }
}

void AssistControl::switchOff()
{
    view_.SetMouseStatue(true);
    if (!overlay_)
        return;
    overlay_->close();
    overlay_->deleteLater();
    overlay_ = nullptr;
}

void AssistControl::switchOn()
{
    makeOverlay();
    switch (second_.start(session_.current().identity)) {
    case SecondCamera::OpenResult::Ok:
        view_.SetViewAdap();
        view_.SetMouseStatue(false);
        placeAgain();
        break;
    case SecondCamera::OpenResult::NoneFound:
        giveUp();
        desk_.showNotice(tr("There is no second camera."));
        break;
    case SecondCamera::OpenResult::CreateFailed:
    case SecondCamera::OpenResult::StartFailed:
        giveUp();
        desk_.showNotice(tr("The second camera cannot be opened."));
        break;
    }
}

void AssistControl::makeOverlay()
{
    if (overlay_)
        return;
    overlay_ = new MoveVideoWidget(&view_);
    connect(&view_, &VideoView::pictureMoved, overlay_, &MoveVideoWidget::followMain);
    tellWhatIsSaved();
}

void AssistControl::tellWhatIsSaved()
{
    if (overlay_)
        overlay_->SetCaption(settings::cameraSynthesis.read()
                                 ? QString()
                                 : tr("Not in the captures: \"Composite photo\" is off."));
}

void AssistControl::placeAgain()
{
    if (!overlay_ || !second_.isOpen())
        return;
    overlay_->followMain(QRect(view_.GetImageCurrentPoint(), view_.GetImageCurrentSize()));
    overlay_->showAt(settings::mergePos.read());
}

/// Not by way of the box alone: its slot does nothing while a dialog is open.
void AssistControl::giveUp()
{
    second_.stop();
    switchOff();
    view_.SetAssistChecked(false);
}

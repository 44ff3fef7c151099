#include "MainDesk.h"

#include "AssistControl.h"
#include "CameraSession.h"
#include "Dialogs.h"
#include "FrameDelivery.h"
#include "JobStack.h"
#include "Settings.h"
#include "StillCapture.h"
#include "VideoView.h"

#include <QTimer>

#include <algorithm>

MainDesk::MainDesk(const Parts& parts) : parts_(parts), jobs_(new JobStack(parts.view)) {}

bool MainDesk::isDialogOpen() const
{
    return std::any_of(
        blockers_.begin(), blockers_.end(), [](const QWidget* dialog) { return dialog->isVisible(); });
}

QWidget& MainDesk::front() const
{
    const auto shown = std::find_if(
        fronts_.begin(), fronts_.end(), [](const QWidget* window) { return window->isVisible(); });
    return shown == fronts_.end() ? parts_.view : **shown;
}

bool MainDesk::mayCompose()
{
    if (isBusy())
        return false;
    const bool hasCamera = parts_.session.state() != CameraSession::Lost && parts_.session.isOpen();
    if (!hasCamera)
        showNotice(tr("No found device!"));
    return hasCamera;
}

bool MainDesk::isMergeDone() const
{
    if (mergePending_)
        Dialogs::warn(&parts_.window, tr("Please complete the image merge first!"));
    return !mergePending_;
}

bool MainDesk::mayCapture()
{
    return mayCompose() && isMergeDone();
}

bool MainDesk::mayStart()
{
    if (isBusy())
        return false;
    const bool isLost = parts_.session.state() == CameraSession::Lost;
    if (isLost)
        showNotice(tr("No found device!"));
    return !isLost && isMergeDone();
}

FrameHandle MainDesk::takeFrame(std::chrono::seconds timeout)
{
    FrameHandle frame = wait_.take(parts_.delivery.channel(), timeout);
    ++captures_;
    return frame;
}

FrameHandle MainDesk::takeSecondFrame(std::chrono::seconds timeout)
{
    return assist_ ? wait_.take(assist_->channel(), timeout) : FrameHandle();
}

bool MainDesk::showsSecondCamera() const
{
    return assist_ && assist_->isShown();
}

QStringList MainDesk::savePages(void* image, int colourMode)
{
    const SavedPages saved = parts_.capture.savePages(image, colourMode);
    ++captures_;
    if (saved.failed > 0 && !saved.paths.isEmpty())
        showNotice(tr("%1 of %2 pages could not be saved. Please check the folder %3.")
                       .arg(QString::number(saved.failed),
                            QString::number(saved.failed + saved.paths.size()),
                            settings::savePath(settings_)));
    else if (saved.failed > 0)
        tellNotSaved();
    return saved.paths;
}

QString MainDesk::saveFrame(void* image, int colourMode)
{
    return saveCropped(image, croppingMode(), colourMode);
}

QString MainDesk::saveCropped(void* image, int cropMode, int colourMode)
{
    QString path = parts_.capture.save(image, cropMode, colourMode);
    ++captures_;
    if (path.isEmpty())
        tellNotSaved();
    return path;
}

void MainDesk::tellNotSaved()
{
    showNotice(
        tr("The picture could not be saved. Please check the folder %1.").arg(settings::savePath(settings_)));
}

QString MainDesk::freeImagePath() const
{
    return parts_.processor.getImagePath();
}

int MainDesk::croppingMode() const
{
    return parts_.delivery.croppingMode();
}

void MainDesk::addThumbnail(const QString& path)
{
    if (!path.isEmpty())
        Q_EMIT captured(path);
}

void MainDesk::tell(const QString& title, const QString& text)
{
    QWidget* window = &parts_.window;
    if (window->isVisible()) {
        Dialogs::inform(window, title, text);
        return;
    }
    // Before the window is there a message would stand alone on an empty screen.
    QTimer::singleShot(0, window, [=] { Dialogs::inform(window, title, text); });
}

void MainDesk::showNotice(const QString& text)
{
    parts_.view.ShowNotice(text);
}

void MainDesk::showJob(const QString& text, const std::shared_ptr<Job>& job)
{
    jobs_->follow(text, job);
}

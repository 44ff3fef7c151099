// The tool bar that the preview hosts: what it is told and what it says.
#include "ToolBar.h"
#include "VideoView.h"

void VideoView::connectToolBar()
{
    connect(toolBar_, &ToolBar::checkDeviceSign, this, &VideoView::checkDeviceSign);
    connect(toolBar_, &ToolBar::checkModelSign, this, &VideoView::checkModelSign);
    connect(toolBar_, &ToolBar::checkResolutionSign, this, &VideoView::checkResolutionSign);
    connect(toolBar_, &ToolBar::checkAssistSign, this, &VideoView::checkAssistSign);
    connect(toolBar_, &ToolBar::clickDeskewSign, this, [this](int id, bool checked) {
        onDeskewChanged(id - 1, checked);
        Q_EMIT clickDeskewSign(id - 1, checked);
    });
    connect(toolBar_, &ToolBar::clickAdapSign, this, &VideoView::clickAdapSign);
    connect(toolBar_, &ToolBar::clickFullScreenSign, this, &VideoView::clickFullScreenSign);
    connect(toolBar_, &ToolBar::clickZoomSign, this, &VideoView::clickZoomSign);
    connect(toolBar_, &ToolBar::clickRotateSign, this, &VideoView::clickRotateSign);
    connect(toolBar_, &ToolBar::clickFreezSign, this, &VideoView::clickFreezSign);

    connect(toolBar_, &ToolBar::clickAdapSign, this, &VideoView::SetViewAdap);
    connect(toolBar_, &ToolBar::clickFullScreenSign, this, &VideoView::toggleFullscreen);
    connect(toolBar_, &ToolBar::clickZoomSign, this, &VideoView::SetHotKeyZoom);
    connect(toolBar_, &ToolBar::clickFreezSign, this, &VideoView::toggleFreeze);
    // A still would hide what these do, and a turned picture has other things inside the rectangle.
    connect(toolBar_, &ToolBar::checkDeviceSign, this, [this] { setFrozen(false); });
    connect(toolBar_, &ToolBar::checkResolutionSign, this, [this] { setFrozen(false); });
    connect(toolBar_, &ToolBar::clickRotateSign, this, [this] {
        setFrozen(false);
        setSelection(QRect());
    });
}

void VideoView::SetDeviceName(const QString& name)
{
    toolBar_->SetDeviceName(name);
}
void VideoView::SetDeviceNames(const QStringList& names)
{
    toolBar_->SetDeviceNames(names);
}
void VideoView::SetDeviceDefaultIdx(int index)
{
    toolBar_->SetDefaultDevice(index);
}
void VideoView::SetModelType(const QString& model)
{
    toolBar_->SetModelType(model);
}
void VideoView::SetResolution(const QString& resolution)
{
    toolBar_->SetResolution(resolution);
}
void VideoView::SetResolutions(const QStringList& resolutions)
{
    toolBar_->SetResolutions(resolutions);
}
void VideoView::SetDefaultResolution(int index)
{
    toolBar_->SetDefaultResolution(index);
}
void VideoView::ShowDeskew(int mode)
{
    toolBar_->ShowDeskew(mode);
}
void VideoView::SetAssistEnable(bool enable)
{
    toolBar_->SetAssistEnable(enable);
}
void VideoView::SetAssistChecked(bool checked)
{
    toolBar_->SetAssistChecked(checked);
}
int VideoView::GetCurrentDeviceIndex() const
{
    return toolBar_->GetCurrentDeviceIndex();
}
int VideoView::GetResolutionCurrentIndex() const
{
    return toolBar_->GetResolutionCurrentIndex();
}
QString VideoView::GetResolutionCurrentText(int index) const
{
    return toolBar_->GetResolutionCurrentText(index);
}
int VideoView::GetResolutionCurrentCount() const
{
    return toolBar_->GetResolutionCurrentCount();
}
void VideoView::onGetEnableTools(bool enable)
{
    toolBar_->setEnabled(enable);
}

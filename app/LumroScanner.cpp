#include "LumroScanner.h"

#include "AssistControl.h"
#include "BtnControl.h"
#include "CardControl.h"
#include "ComeForward.h"
#include "ConfigSet.h"
#include "DeviceControl.h"
#include "Dialogs.h"
#include "FaceControl.h"
#include "FingerprintControl.h"
#include "FrozenPage.h"
#include "LanguageFolder.h"
#include "MainDesk.h"
#include "More.h"
#include "OutputControl.h"
#include "PrinterControl.h"
#include "ScanControl.h"
#include "ScanModes.h"
#include "Settings.h"
#include "Shortcuts.h"
#include "ShutterSound.h"
#include "Thumbnail.h"
#include "TitleBar.h"
#include "TuningControl.h"
#include "VideoView.h"
#include "WindowCare.h"
#include "WindowEdges.h"
#include "ui_LumroScanner.h"

#include <QApplication>
#include <QCloseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>
#include <QVBoxLayout>

namespace {

const QString settingsButtonStyle = QStringLiteral(
    "QPushButton{border-image:url(:/images/%1/images/%2/%3.png);background-color:rgba(0,0,0,0);}"
    "QPushButton:hover{image: url(:/images/%1/images/%2/%3.png);"
    "border-image: url(:/images/common/images/common/hover.png);}"
    "QPushButton:pressed{image: url(:/images/%1/images/%2/%3.png);"
    "border-image: url(:/images/common/images/common/pressed.png);}");

constexpr int keyZoomIn = 8;
constexpr int keyZoomOut = 9;

void fill(QWidget* container, QWidget* content)
{
    auto* layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
}

} // namespace

LumroScanner::LumroScanner(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui_LumroScanner>()),
      delivery_(camera_, [this](const QImage& frame) { showFrame(frame); }),
      capture_(session_, delivery_, processor_, [this] { return ui_->videoView->getSelectedRect(); })
{
    ui_->setupUi(this);
    setWindowFlags(Qt::FramelessWindowHint | Qt::Window);
    setWindowTitle(tr("Lumro TRVS"));
    new WindowCare(*this);
    makeParts();
    makeFeatures();
    connectTools();
    connectButtons();
    connectSettings();
    devices_->discover();
    changelanguage(settings::appLanguage.read(settings_));
    startKeys();
}

LumroScanner::~LumroScanner()
{
    if (keysListening_)
        camera_.MirvakHid_Deinit();
    delivery_.channel().close(); // a timed capture that waits for its frame is sent away
    scans_->finish();
    assist_->stop();
    faces_->finish();
    session_.shutDown();
    outputs_->finish();
}

void LumroScanner::makeParts()
{
    more_ = new More(this);
    configSet_ = new ConfigSet(this);
    buttons_ = new BtnControl(ui_->buttonContainer);
    fill(ui_->buttonContainer, buttons_);
    thumbnail_ = new Thumbnail(ui_->thumbnailContainer);
    fill(ui_->thumbnailContainer, thumbnail_);
    titleBar_ = new TitleBar(ui_->titleContainer);
    fill(ui_->titleContainer, titleBar_);
    titleBar_->SetTitle(tr("Lumro TRVS 2.1"));
    titleBar_->ShowSkinButton(false);
    titleBar_->EnableWindowMove(true);
    new WindowEdges(*this); // lie over all others
    ui_->setting->setToolTip(tr("Settings"));
    ui_->setting->setAccessibleName(tr("Settings"));
}

void LumroScanner::makeFeatures()
{
    VideoView& view = *ui_->videoView;
    desk_ =
        std::make_unique<MainDesk>(MainDesk::Parts{*this, view, session_, delivery_, processor_, capture_});
    for (const QWidget* dialog : std::initializer_list<QWidget*>{configSet_, more_})
        desk_->addBlocker(dialog);
    assist_ = std::make_unique<AssistControl>(camera_, GetAssCameraData, this, session_, view, *desk_);
    desk_->setAssist(assist_.get());
    scanModes_ = std::make_unique<ScanModes>(*desk_, camera_);
    scans_ = std::make_unique<ScanControl>(camera_, capture_, *desk_, *this);
    outputs_ =
        std::make_unique<OutputControl>(camera_, *desk_, *thumbnail_, view, *this, *configSet_, capture_);
    cards_ = std::make_unique<CardControl>(*desk_, *this);
    printer_ = std::make_unique<PrinterControl>(*desk_);
    frozenPage_ = std::make_unique<FrozenPage>(view, delivery_.channel(), camera_, *desk_);
    tuning_ = std::make_unique<TuningControl>(camera_, session_, delivery_, view, *desk_);
    fingerprint_ = std::make_unique<FingerprintControl>(*desk_, *thumbnail_);
    faces_ = std::make_unique<FaceControl>(FaceControl::Parts{camera_, session_, *assist_, *desk_});
    devices_ = new DeviceControl(session_, delivery_, view, *desk_, this);
    delivery_.onSecondFrame(
        [this] { QMetaObject::invokeMethod(this, &LumroScanner::readBookLine, Qt::QueuedConnection); });
    delivery_.setPaperSizeCheck([this](void* image) { session_.checkPaperSize(image); });
    delivery_.setMark([this](const PageMark& mark) { showMark(mark); });
    delivery_.setRecorder([this](void* image) { outputs_->record(image); });
    delivery_.setPageCheck([this](void* image) { scans_->checkautopage(image); });
}

void LumroScanner::connectTools()
{
    VideoView* view = ui_->videoView;
    connect(titleBar_, &TitleBar::clickedclosesign, this, &LumroScanner::onCloseApp);
    connect(view, &VideoView::checkDeviceSign, this, &LumroScanner::onDeviceChanged);
    connect(view, &VideoView::checkModelSign, this, &LumroScanner::onModelChanged);
    connect(view, &VideoView::checkResolutionSign, this, &LumroScanner::onResolutionChanged);
    connect(view, &VideoView::checkAssistSign, this, &LumroScanner::onAssistCheacked);
    connect(view, &VideoView::clickRotateSign, this, &LumroScanner::onRotateChanged);
    connect(view, &VideoView::clickDeskewSign, this, &LumroScanner::onDeskewChanged);
    connect(view, &VideoView::doubClickSign, view, &VideoView::toggleFullscreen);
    connect(desk_.get(), &MainDesk::toolsEnabled, this, &LumroScanner::setenabletoolssign);
    connect(this, &LumroScanner::setenabletoolssign, view, &VideoView::onGetEnableTools);
    connect(desk_.get(), &MainDesk::captured, this, &LumroScanner::setthumdnailpath);
    connect(this, &LumroScanner::hidclickedsignel, this, &LumroScanner::onGetHidSignal, Qt::QueuedConnection);
    // Automatic, so that a capture on another thread reaches the strip through the event loop.
    connect(this, &LumroScanner::setthumdnailpath, thumbnail_, [this](const QString& path) {
        thumbnail_->AddImage(path, -1);
    });
    // On the capture thread: queued frames would pile up.
    connect(
        this,
        &LumroScanner::setpdfexframedata,
        this,
        [this](const QImage& frame) { outputs_->setpdfexframedata(frame); },
        Qt::DirectConnection);
    connect(this, &LumroScanner::setthumdnailpath, new ShutterSound(this), &ShutterSound::play);
    connect(scans_.get(),
            &ScanControl::autopageScanSign,
            this,
            &LumroScanner::autopageScanSign,
            Qt::DirectConnection);
    connect(scans_.get(), &ScanControl::pictureSaved, this, &LumroScanner::setthumdnailpath);
    connect(outputs_.get(), &OutputControl::filmSizeWanted, this, &LumroScanner::filmAt);
}

void LumroScanner::connectButtons()
{
    using Signal = void (BtnControl::*)();
    using Slot = void (LumroScanner::*)();
    const std::pair<Signal, Slot> table[] = {
        {&BtnControl::btnMoreClicked, &LumroScanner::onMore},
        {&BtnControl::btnScannerClicked, &LumroScanner::onScanner},
        {&BtnControl::btnDocumentClicked, &LumroScanner::onDocument},
        {&BtnControl::btnAutoScannerClicked, &LumroScanner::onAutoScanner},
        {&BtnControl::btnBarcodeClicked, &LumroScanner::onBarcode},
        {&BtnControl::btnOcrClicked, &LumroScanner::onOcr},
        {&BtnControl::btnPicComposeClicked, &LumroScanner::onPicCompose},
        {&BtnControl::btnCardComposeClicked, &LumroScanner::onCardCompose},
        {&BtnControl::btnRecordClicked, &LumroScanner::onRecord},
        {&BtnControl::btnPdfClicked, &LumroScanner::onPdf},
        {&BtnControl::synthesizePdfClicked, &LumroScanner::SynthesizePdf},
        {&BtnControl::btnPdfExClicked, &LumroScanner::onPdfEx},
        {&BtnControl::btnBookscanClicked, &LumroScanner::onBookFlat},
        {&BtnControl::btnLaohuaClicked, &LumroScanner::onFactoryTesting},
        {&BtnControl::btnPrintClicked, &LumroScanner::onPrint},
        {&BtnControl::btnReadIdCardClicked, &LumroScanner::onReadIdCard},
        {&BtnControl::btnFaceClicked, &LumroScanner::onFaceVerify},
        {&BtnControl::btnFingerPrintClicked, &LumroScanner::onFingerPrint},
        {&BtnControl::btnSignClicked, &LumroScanner::onSign},
    };
    for (const auto& [signal, slot] : table)
        connect(buttons_, signal, this, slot);
    connect(ui_->setting, &QPushButton::clicked, this, &LumroScanner::onSettings);
    connect(more_, qOverload<int, bool>(&More::displayCheckBox), buttons_, &BtnControl::onDisplayCheckBox);
    connect(more_, qOverload<int, int>(&More::displayCheckBox), buttons_, &BtnControl::onDisplayMoreCheck);
}

void LumroScanner::connectSettings()
{
    connect(configSet_, &ConfigSet::booklineclicked, ui_->videoView, &VideoView::SetBooklineEnable);
    connect(configSet_, &ConfigSet::scansizechanged, &session_, &CameraSession::setScanSize);
    connect(configSet_, &ConfigSet::languageitemchanged, this, &LumroScanner::onLanguageChosen);
    auto* shortcuts = new Shortcuts(*ui_->videoView);
    connect(configSet_, &ConfigSet::shortcutschanged, shortcuts, &Shortcuts::rebind);
    connect(shortcuts, &Shortcuts::scannerPressed, this, &LumroScanner::onScanner);
    connect(shortcuts, &Shortcuts::documentPressed, this, &LumroScanner::onDocument);
    connect(shortcuts, &Shortcuts::bookPressed, this, &LumroScanner::onBookFlat);
    connect(configSet_, &ConfigSet::currentmergepos, this, [this] { assist_->placeAgain(); });
    connect(configSet_, &ConfigSet::compositechanged, this, [this] { assist_->tellWhatIsSaved(); });
}

void LumroScanner::startKeys()
{
    keysListening_ = camera_.MirvakHid_Init(hidkeydevcallback, this, usbhidkeydevcallback, this) == MIRVAK_OK;
    if (!keysListening_)
        camera_.MirvakHid_Deinit();
}

// --- threads of the camera library ------------------------------------------------------------------------

void LumroScanner::GetCameraData(void* image, void*, int, int, int, void* context)
{
    auto* self = static_cast<LumroScanner*>(context);
    if (image) {
        self->delivery_.onFrame(image);
        return;
    }
    self->delivery_.channel().interrupt(); // a capture that waits would only time out
    self->session_.noteStreamEnded();
}

void LumroScanner::showFrame(const QImage& frame)
{
    if (outputs_->takesFrames())
        Q_EMIT setpdfexframedata(frame);
    else
        ui_->videoView->SetImageData(frame);
}

void LumroScanner::showMark(const PageMark& mark)
{
    // The frames that another window shows have no marks in this one.
    ui_->videoView->SetPageMark(outputs_->takesFrames() ? PageMark() : mark);
    outputs_->showMark(mark);
}

void LumroScanner::GetAssCameraData(void* image, void*, int, int, int, void* context)
{
    static_cast<LumroScanner*>(context)->assist_->onFrame(image);
}

void LumroScanner::hidkeydevcallback(int key, void* self)
{
    auto* window = static_cast<LumroScanner*>(self);
    if (key >= 1 && window->keyGate_.enter(window->desk_->captures()))
        Q_EMIT window->hidclickedsignel(key);
}

void LumroScanner::usbhidkeydevcallback(int key, void* self)
{
    hidkeydevcallback(key, self);
}

// --- window and tools -------------------------------------------------------------------------------------

void LumroScanner::onMore()
{
    if (more_->isVisible())
        return comeForward(*more_);
    if (desk_->isDialogOpen())
        return;
    more_->move(frameGeometry().center() - more_->rect().center());
    more_->show();
}

void LumroScanner::onSettings()
{
    if (desk_->isDialogOpen() && !configSet_->isVisible())
        return;
    configSet_->setVisible(!configSet_->isVisible());
}

void LumroScanner::onLanguageChosen(int row)
{
    changelanguage(row);
    Q_EMIT languageitemchanged(row);
    Dialogs::inform(configSet_, tr("Tips"), tr("Restart the software to take effect!"));
}

void LumroScanner::onDeviceChanged(int index)
{
    if (desk_->isDialogOpen())
        devices_->showRunning();
    else
        devices_->changeDevice(index);
}

void LumroScanner::onModelChanged(int) {}

void LumroScanner::onResolutionChanged(int index)
{
    if (desk_->isDialogOpen())
        devices_->showRunning();
    else
        devices_->changeResolution(index);
}

void LumroScanner::onAssistCheacked(bool checked)
{
    if (!desk_->isDialogOpen())
        assist_->onAssistCheacked(checked);
}

void LumroScanner::onDeskewChanged(int option, bool checked)
{
    const bool needsDevice = option == 0;
    if (desk_->isDialogOpen() || option < 0 || option > 2 || (needsDevice && !session_.isOpen()))
        return;
    const int mode = checked ? option + 1 : cropping::none;
    delivery_.setCroppingMode(mode);
    if (option != 2)
        settings::deskew.write(settings_, mode);
}

void LumroScanner::onRotateChanged(int quarterTurns)
{
    delivery_.setRotation(quarterTurns);
}

void LumroScanner::onGetHidSignal(int key)
{
    if (keyGate_.isFresh(desk_->captures()))
        serveKey(key);
    keyGate_.leave();
}

void LumroScanner::serveKey(int key)
{
    if (key <= 1)
        return;
    if (key == keyZoomIn || key == keyZoomOut)
        ui_->videoView->SetHotKeyZoom(key == keyZoomIn ? 1 : 2);
    else if (!QApplication::activeModalWidget())
        onScanner();
}

void LumroScanner::onSecondStart()
{
    desk_->showNotice(tr("The program is already running."));
    comeForward(*this, *ui_->videoView->window());
}

void LumroScanner::readBookLine()
{
    ui_->videoView->SetBooklineEnable(settings::bookLine.read(settings_));
}

void LumroScanner::changelanguage(int)
{
    const QString folder = languageFolder(settings::appLanguage.read(settings_));
    ui_->setting->setStyleSheet(settingsButtonStyle.arg(folder, folder, QStringLiteral("setting")));
}

void LumroScanner::onCloseApp()
{
    devices_->stop();
    assist_->stop();
    session_.shutDown();
    close();
}

void LumroScanner::closeEvent(QCloseEvent* event)
{
    devices_->stop();
    assist_->stop();
    session_.closeCamera();
    delivery_.channel().interrupt(); // no frame will come
    event->accept();
}

void LumroScanner::paintEvent(QPaintEvent*)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

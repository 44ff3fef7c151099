#pragma once

#include "CameraSession.h"
#include "CaptureProcessor.h"
#include "ConfigSettings.h"
#include "FrameDelivery.h"
#include "KeyGate.h"
#include "StillCapture.h"
#include "mirvakcamera.h"

#include <QWidget>

#include <memory>

class AssistControl;
class BtnControl;
class CardControl;
class ConfigSet;
class DeviceControl;
class FaceControl;
class FingerprintControl;
class FrozenPage;
class MainDesk;
class More;
class OutputControl;
class PrinterControl;
class QPixmap;
class ScanControl;
class ScanModes;
class Thumbnail;
class TitleBar;
class TuningControl;
class Ui_LumroScanner;

/// The main window. It builds the parts, connects them and forwards; the work is done in a class per feature.
/// GUI thread only, except GetCameraData() and the key callbacks.
class LumroScanner : public QWidget
{
    Q_OBJECT

public:
    explicit LumroScanner(QWidget* parent = nullptr);
    ~LumroScanner() override;

    /// Frame callback of the main camera, on its capture thread; `context` is the window.
    static void
    GetCameraData(void* image, void* userData, int byteSize, int width, int height, void* context);
    /// The same for the second camera.
    static void
    GetAssCameraData(void* image, void* userData, int byteSize, int width, int height, void* context);
    /// Key callbacks, on the key listener's thread; `self` is the window.
    static void hidkeydevcallback(int key, void* self);
    static void usbhidkeydevcallback(int key, void* self);

    /// The next frame of the main camera, or null after `timeout`.
    FrameHandle GetImageSync(std::chrono::seconds timeout);
    FrameHandle GetImageSyncAssdev(std::chrono::seconds timeout);
    QString imageSave(void* const& image, int cropMode, int colourMode);
    QString imageSave(const QImage& image, int mode);
    QString getImagePath() const;

    /// While a card composition waits for its second shot, other captures are refused.
    void setMergePending(bool pending);
    /// Shows the dialog that joins two pictures; the result may go to `savePath`.
    void ImgMerge(const QPixmap& first, const QPixmap& second, const QString& savePath);
    /// Asks for a file and writes the pictures into it as a PDF. @return true when it holds all of them
    bool drawImageToPDF(const QStringList& images);

Q_SIGNALS:
    void autopageScanSign();
    void setenabletoolssign(bool enable);
    void setthumdnailpath(const QString& path);
    void setpdfexframedata(const QImage& frame);
    void hidclickedsignel(int key);
    void collectresult(void* result);
    void languageitemchanged(int row);

public Q_SLOTS:
    void onScanner();
    void onDocument();
    void onAutoScanner();
    void onAutoScanTiemr();
    void onStopAutoScan();
    void onBarcode();
    void onOcr();
    void onPicCompose();
    void onCardCompose();
    void onRecord();
    void onPdf();
    void SynthesizePdf();
    void onPdfEx();
    void onBookFlat();
    void onFactoryTesting();
    void onPrint();
    void onReadIdCard();
    void onFaceVerify();
    void onFingerPrint();
    void onSign();

    void onMore();
    void onSettings();
    void onCloseApp();
    void onDeviceChanged(int index);
    void onModelChanged(int index);
    void onResolutionChanged(int index);
    void onAssistCheacked(bool checked);
    void onDeskewChanged(int option, bool checked);
    void onRotateChanged(int quarterTurns);
    void onGetHidSignal(int key);
    /// The user has started the program again: the window comes forward.
    void onSecondStart();
    /// Restyles what follows the language while the program runs; its texts change after a restart.
    void changelanguage(int row);
    void onLanguageChosen(int row);
    void onGetSynthesisPath(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void makeParts();
    void makeFeatures();
    void connectTools();
    void connectButtons();
    void connectSettings();
    void startKeys();
    void serveKey(int key);
    void showFrame(const QImage& frame);
    void showMark(const PageMark& mark);
    void readBookLine();
    void filmAt(int resolutionIndex);

    std::unique_ptr<Ui_LumroScanner> ui_;
    ConfigSettings settings_;
    BtnControl* buttons_ = nullptr;
    Thumbnail* thumbnail_ = nullptr;
    TitleBar* titleBar_ = nullptr;
    More* more_ = nullptr;
    ConfigSet* configSet_ = nullptr;

    // The session is declared after everything that its callback touches: it stops first.
    MirvakCamera camera_;
    CaptureProcessor processor_{camera_};
    FrameDelivery delivery_;
    StillCapture capture_;
    CameraSession session_{camera_, GetCameraData, this};
    std::unique_ptr<MainDesk> desk_;
    std::unique_ptr<AssistControl> assist_;
    std::unique_ptr<ScanModes> scanModes_;
    std::unique_ptr<ScanControl> scans_;
    std::unique_ptr<OutputControl> outputs_;
    std::unique_ptr<CardControl> cards_;
    std::unique_ptr<PrinterControl> printer_;
    std::unique_ptr<FrozenPage> frozenPage_;
    std::unique_ptr<TuningControl> tuning_;
    std::unique_ptr<FingerprintControl> fingerprint_;
    std::unique_ptr<FaceControl> faces_;
    DeviceControl* devices_ = nullptr;
    KeyGate keyGate_;
    bool keysListening_ = false;
};

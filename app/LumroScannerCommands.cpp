// What the window is asked for by buttons, keys and its features. It forwards.
#include "LumroScanner.h"

#include "AssistControl.h"
#include "CardControl.h"
#include "FaceControl.h"
#include "FactoryTest.h"
#include "FingerprintControl.h"
#include "MainDesk.h"
#include "OutputControl.h"
#include "PrinterControl.h"
#include "ScanControl.h"
#include "ScanModes.h"
#include "VideoView.h"
#include "ui_LumroScanner.h"

// --- captures ---------------------------------------------------------------------------------------------

FrameHandle LumroScanner::GetImageSync(std::chrono::seconds timeout)
{
    return delivery_.channel().take(timeout);
}

FrameHandle LumroScanner::GetImageSyncAssdev(std::chrono::seconds timeout)
{
    return assist_->channel().take(timeout);
}

QString LumroScanner::imageSave(void* const& image, int cropMode, int colourMode)
{
    return capture_.save(image, cropMode, colourMode);
}

QString LumroScanner::imageSave(const QImage& image, int mode)
{
    return processor_.imageSave(image, mode);
}

QString LumroScanner::getImagePath() const
{
    return processor_.getImagePath();
}

void LumroScanner::setMergePending(bool pending)
{
    desk_->setMergePending(pending);
}

void LumroScanner::onScanner()
{
    scanModes_->scan();
}

void LumroScanner::onDocument()
{
    scanModes_->scanDocument();
}

void LumroScanner::onAutoScanner()
{
    scans_->onAutoScanner();
}

void LumroScanner::onAutoScanTiemr()
{
    scans_->onAutoScanTiemr();
}

void LumroScanner::onStopAutoScan()
{
    scans_->onStopAutoScan();
}

void LumroScanner::onPicCompose()
{
    outputs_->onPicCompose();
}

void LumroScanner::onCardCompose()
{
    outputs_->onPicCompose();
}

void LumroScanner::ImgMerge(const QPixmap& first, const QPixmap& second, const QString& savePath)
{
    outputs_->ImgMerge(first, second, savePath);
}

void LumroScanner::onPdf()
{
    outputs_->onPdf();
}

void LumroScanner::onPdfEx()
{
    outputs_->onPdfEx(session_, *ui_->videoView, delivery_.rotation());
}

void LumroScanner::onBarcode()
{
    outputs_->onBarcode();
}

void LumroScanner::SynthesizePdf()
{
    outputs_->SynthesizePdf();
}

bool LumroScanner::drawImageToPDF(const QStringList& images)
{
    return outputs_->drawImageToPDF(images);
}

void LumroScanner::onGetSynthesisPath(const QString& path)
{
    outputs_->onGetSynthesisPath(path);
}

// --- functions of further windows -------------------------------------------------------------------------

void LumroScanner::onOcr()
{
    outputs_->onOcr();
}

void LumroScanner::onRecord()
{
    outputs_->onRecord(session_, *ui_->videoView, delivery_.rotation());
}

void LumroScanner::filmAt(int resolutionIndex)
{
    ui_->videoView->SetDefaultResolution(resolutionIndex);
    onResolutionChanged(resolutionIndex);
    onRecord();
}

void LumroScanner::onBookFlat()
{
    outputs_->onBookFlat(session_, *ui_->videoView);
}

void LumroScanner::onFactoryTesting()
{
    factoryTest::run(factoryTest::scriptFolder(),
                     camera_.MirvakDevice_GetDevCount(),
                     ui_->videoView->GetCurrentDeviceIndex());
}

void LumroScanner::onPrint()
{
    printer_->onPrint();
}

void LumroScanner::onReadIdCard()
{
    cards_->onReadIdCard();
}

void LumroScanner::onFaceVerify()
{
    faces_->onFaceVerify();
}

void LumroScanner::onFingerPrint()
{
    fingerprint_->onFingerPrint();
}

void LumroScanner::onSign()
{
    desk_->mayCapture(); // the signature is taken by another program; only the guard speaks here
}

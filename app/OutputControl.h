#pragma once

#include "BarcodeScan.h"
#include "BookScan.h"
#include "CardComposition.h"
#include "PageMark.h"
#include "PdfExControl.h"
#include "PdfScan.h"
#include "PdfSynthesis.h"
#include "PdfTexts.h"
#include "RecordControl.h"
#include "TextScan.h"

#include <QObject>

class CameraSession;
class ConfigSet;
class ImageMerge;
class MainDesk;
class MirvakCamera;
class PdfEx;
class QImage;
class QWidget;
class StillCapture;
class Thumbnail;
class VideoView;

/// The functions that make other documents of captures, with their windows. GUI thread only.
class OutputControl : public QObject
{
    Q_OBJECT

public:
    /// `camera`, `desk`, `strip`, `settings` and `capture` are borrowed; the dialogs belong to `window`, the
    /// signs to `view`.
    OutputControl(MirvakCamera& camera,
                  MainDesk& desk,
                  Thumbnail& strip,
                  VideoView& view,
                  QWidget& window,
                  const ConfigSet& settings,
                  StillCapture& capture);

    /// Both buttons of the composition.
    void onPicCompose() { composition_.takeShot(); }
    /// Shows the dialog that joins two pictures; the result may go to `savePath`.
    void ImgMerge(const QPixmap& first, const QPixmap& second, const QString& savePath);
    void onGetSynthesisPath(const QString& path);
    void onPdf() { pdfScan_.scan(); }
    void onPdfEx(const CameraSession& session, const VideoView& view, int rotation);
    void onBarcode() { barcodeScan_.scan(); }
    void onOcr() { textScan_.scan(); }
    void onBookFlat(const CameraSession& session, const VideoView& view);
    void onRecord(const CameraSession& session, const VideoView& view, int rotation);
    void record(void* image) { recording_.record(image); } ///< capture thread: every frame
    void SynthesizePdf() { pdfSynthesis_.SynthesizePdf(); }
    bool drawImageToPDF(const QStringList& images) { return pdfSynthesis_.drawImageToPDF(images); }
    /// Whether the live frames go to the multi-page dialog. Thread-safe, as is setpdfexframedata().
    bool takesFrames() const;
    void setpdfexframedata(const QImage& frame);
    void showMark(const PageMark& mark); ///< of the frame that goes there next; thread-safe
    /// Ends a recording and waits for what is being written; for the end of the program.
    void finish();

Q_SIGNALS:
    /// The user wants this resolution, one of the open camera's, for a film, and then the film.
    void filmSizeWanted(int resolutionIndex);

private:
    void makeSigns(VideoView& view);

    Thumbnail& strip_;
    ImageMerge* imageMerge_;
    PdfEx* pdfEx_;
    CardComposition composition_;
    PdfTexts pdfTexts_;
    PdfExControl pdfExControl_;
    PdfScan pdfScan_;
    PdfSynthesis pdfSynthesis_;
    BarcodeScan barcodeScan_;
    TextScan textScan_;
    BookScan bookScan_;
    RecordControl recording_;
};

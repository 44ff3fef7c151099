#pragma once

#include "CardComposition.h"
#include "PdfScan.h"
#include "PdfSynthesis.h"

#include <QObject>

class ImageMerge;
class MainDesk;
class MirvakCamera;
class QWidget;
class Thumbnail;

/// The functions that make other documents of captures, with their windows. GUI thread only.
class OutputControl : public QObject
{
    Q_OBJECT

public:
    /// `camera`, `desk` and `strip` are borrowed; the dialogs belong to `window`.
    OutputControl(MirvakCamera& camera, MainDesk& desk, Thumbnail& strip, QWidget& window);

    /// Both buttons of the composition.
    void onPicCompose() { composition_.takeShot(); }
    /// Shows the dialog that joins two pictures; the result may go to `savePath`.
    void ImgMerge(const QPixmap& first, const QPixmap& second, const QString& savePath);
    void onGetSynthesisPath(const QString& path);
    void onPdf() { pdfScan_.scan(); }
    void SynthesizePdf() { pdfSynthesis_.SynthesizePdf(); }
    bool drawImageToPDF(const QStringList& images) { return pdfSynthesis_.drawImageToPDF(images); }

private:
    Thumbnail& strip_;
    ImageMerge* imageMerge_;
    CardComposition composition_;
    PdfScan pdfScan_;
    PdfSynthesis pdfSynthesis_;
};

#include "OutputControl.h"

#include "CameraSession.h"
#include "ConfigSet.h"
#include "FirstSide.h"
#include "ImageMerge.h"
#include "MainDesk.h"
#include "PdfEx.h"
#include "RecordingMark.h"
#include "StillCapture.h"
#include "Thumbnail.h"
#include "VideoView.h"

namespace {

BookScan::Options bookOptions(const ConfigSet& settings)
{
    BookScan::Options options;
    settings.getBookFlatInfo(options.removeFinger, options.doublePage, options.documentProcess);
    return options;
}

} // namespace

OutputControl::OutputControl(MirvakCamera& camera,
                             MainDesk& desk,
                             Thumbnail& strip,
                             VideoView& view,
                             QWidget& window,
                             const ConfigSet& settings,
                             StillCapture& capture)
    : strip_(strip), imageMerge_(new ImageMerge(&window)), pdfEx_(new PdfEx(&window, camera)),
      composition_(desk,
                   [this](const QPixmap& first, const QPixmap& second, const QString& savePath) {
                       ImgMerge(first, second, savePath);
                   }),
      pdfTexts_(desk, camera, TextScan::installedModels()), pdfExControl_(desk, *pdfEx_, pdfTexts_),
      pdfScan_(desk, camera, pdfTexts_), pdfSynthesis_(desk, window, camera, pdfTexts_),
      barcodeScan_(desk, camera), textScan_(desk, TextScan::installedModels()),
      bookScan_(
          desk,
          camera,
          &window,
          [&settings] { return bookOptions(settings); },
          [&capture](void* page, int colourMode) { return capture.save(page, cropping::none, colourMode); }),
      recording_(desk, camera, window)
{
    connect(&desk, &MainDesk::documentMade, this, [this](const QString& path, QPixmap icon) {
        strip_.AddImage(icon, path, -1);
    });
    desk.addBlocker(imageMerge_);
    connect(imageMerge_, &ImageMerge::postSynthesisPath, this, &OutputControl::onGetSynthesisPath);
    desk.addFront(pdfEx_);
    connect(&recording_, &RecordControl::filmSizeWanted, this, &OutputControl::filmSizeWanted);
    makeSigns(view);
}

void OutputControl::makeSigns(VideoView& view)
{
    auto* firstSide = new FirstSide(view);
    connect(&composition_, &CardComposition::firstSideChanged, firstSide, &FirstSide::showPicture);
    connect(firstSide, &FirstSide::givenUp, &composition_, &CardComposition::giveUp);
    auto* mark = new RecordingMark(view);
    connect(&recording_, &RecordControl::filming, mark, &RecordingMark::showLength);
    connect(&recording_, &RecordControl::ended, mark, &QWidget::hide);
}

void OutputControl::ImgMerge(const QPixmap& first, const QPixmap& second, const QString& savePath)
{
    imageMerge_->close();
    imageMerge_->setMergeImage(first, second, savePath);
    imageMerge_->show();
}

void OutputControl::onGetSynthesisPath(const QString& path)
{
    strip_.AddImage(path, -1);
}

void OutputControl::onPdfEx(const CameraSession& session, const VideoView& view, int rotation)
{
    const QSize size = session.size();
    pdfExControl_.open(
        session.device(), size.width(), size.height(), rotation, view.GetResolutionCurrentIndex());
}

void OutputControl::onBookFlat(const CameraSession& session, const VideoView& view)
{
    const int shown = view.GetCurrentDeviceIndex();
    bookScan_.scan(session.cameras().value(shown).usbId, view.GetBooklineEnable());
}

void OutputControl::onRecord(const CameraSession& session, const VideoView& view, int rotation)
{
    const int resolution = view.GetResolutionCurrentIndex();
    recording_.start({session.device(), resolution, view.GetResolutionCurrentText(resolution), rotation});
}

bool OutputControl::takesFrames() const
{
    return pdfEx_->takesFrames();
}

void OutputControl::setpdfexframedata(const QImage& frame)
{
    pdfEx_->SetPdfDataframe(frame);
}

void OutputControl::showMark(const PageMark& mark)
{
    pdfEx_->SetPageMark(mark);
}

void OutputControl::finish()
{
    recording_.finish();
    pdfEx_->finish();
    pdfTexts_.giveUp();
}

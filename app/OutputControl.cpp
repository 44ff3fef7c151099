#include "OutputControl.h"

#include "ImageMerge.h"
#include "MainDesk.h"
#include "Thumbnail.h"

OutputControl::OutputControl(MirvakCamera& camera, MainDesk& desk, Thumbnail& strip, QWidget& window)
    : strip_(strip), imageMerge_(new ImageMerge(&window)),
      composition_(desk,
                   [this](const QPixmap& first, const QPixmap& second, const QString& savePath) {
                       ImgMerge(first, second, savePath);
                   }),
      pdfScan_(desk, camera), pdfSynthesis_(desk, window)
{
    connect(&desk, &MainDesk::documentMade, this, [this](const QString& path, QPixmap icon) {
        strip_.AddImage(icon, path, -1);
    });
    desk.addBlocker(imageMerge_);
    connect(imageMerge_, &ImageMerge::postSynthesisPath, this, &OutputControl::onGetSynthesisPath);
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

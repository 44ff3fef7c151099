#include "OutputControl.h"

#include "ImageMerge.h"
#include "MainDesk.h"
#include "Thumbnail.h"

OutputControl::OutputControl(MainDesk& desk, Thumbnail& strip, QWidget& window)
    : strip_(strip), imageMerge_(new ImageMerge(&window)),
      composition_(desk, [this](const QPixmap& first, const QPixmap& second, const QString& savePath) {
          ImgMerge(first, second, savePath);
      })
{
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

#pragma once

#include "CardComposition.h"

#include <QObject>

class ImageMerge;
class MainDesk;
class QWidget;
class Thumbnail;

/// The functions that make other documents of captures, with their windows. GUI thread only.
class OutputControl : public QObject
{
    Q_OBJECT

public:
    /// `desk` and `strip` are borrowed; the dialogs belong to `window`.
    OutputControl(MainDesk& desk, Thumbnail& strip, QWidget& window);

    /// Both buttons of the composition.
    void onPicCompose() { composition_.takeShot(); }
    /// Shows the dialog that joins two pictures; the result may go to `savePath`.
    void ImgMerge(const QPixmap& first, const QPixmap& second, const QString& savePath);
    void onGetSynthesisPath(const QString& path);

private:
    Thumbnail& strip_;
    ImageMerge* imageMerge_;
    CardComposition composition_;
};

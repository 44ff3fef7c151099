#pragma once

#include "CropSelection.h"
#include "FrameMailbox.h"
#include "FrameScaler.h"
#include "ShownMark.h"
#include "ViewGeometry.h"
#include "ViewNotice.h"

#include <QImage>
#include <QStringList>
#include <QWidget>

#include <atomic>
#include <mutex>

class FrozenBar;
class FullScreen;
class ToolBar;
class ToolBarHost;

/// The live preview: paints the newest camera frame, zooms, pans, lets the user draw a crop rectangle and
/// hosts the tool bar, whose choices it passes on. Fit, zoom, full screen and freeze are carried out here;
/// whoever connects their signals must not carry them out a second time.
///
/// GUI thread only, except SetImageData(), SetPageMark(), SetBooklineEnable(), GetBooklineEnable() and
/// getSelectedRect(), which are thread-safe. The thread that calls them must have stopped before the view is
/// destroyed.
class VideoView : public QWidget
{
    Q_OBJECT

public:
    explicit VideoView(QWidget* parent = nullptr);
    ~VideoView() override;

    /// Hands over the newest frame; a null picture is ignored. The picture is shared, not copied: its pixels
    /// must stay valid and unchanged for as long as any QImage copy of it lives, so a buffer of a pool is
    /// wrapped with a cleanup function that gives it back. Up to three frames are
    /// held (the shown one, the one about to take its place, one that waits), so a pool of four never runs
    /// dry. RGB888 is painted fastest. The size may change at every frame.
    void SetImageData(const QImage& frame);
    /// What is known of the page in the frame that SetImageData() hands over next: its outline shows whether
    /// a capture will be good, and what is wrong is said. Holds until the next call.
    void SetPageMark(const PageMark& mark);
    /// Drops the picture, so that the info text shows again; ends the freeze. Call it after the camera
    /// stopped.
    void ClearFrame();

    /// The text shown while there is no picture.
    void SetShowInfo(const QString& text);
    const QString& GetShowInfo() const { return info_; }
    /// Shows a line over the picture for a few seconds; the newest one wins. Does not take the focus.
    void ShowNotice(const QString& text);

    void SetDeviceName(const QString& name);             ///< appends one; empty adds nothing
    void SetDeviceNames(const QStringList& names);       ///< replaces all
    void SetDeviceDefaultIdx(int index);                 ///< selects that row
    void SetModelType(const QString& model);             ///< appends one; empty adds nothing
    void SetResolution(const QString& resolution);       ///< appends one; empty adds nothing
    void SetResolutions(const QStringList& resolutions); ///< replaces all
    void SetDefaultResolution(int index);                ///< selects that row
    void ShowDeskew(int mode); ///< ticks that cropping button, 1 to 3, or none, without a signal
    void SetAssistEnable(bool enable);
    void SetAssistChecked(bool checked);

    /// The red guide line for the spine of a book. Thread-safe.
    void SetBooklineEnable(bool enable);
    bool GetBooklineEnable() const { return bookLine_; }
    /// Whether the picture reacts to the mouse (wheel, dragging, drawing a rectangle). True at first.
    void SetMouseStatue(bool reacts);
    /// Fits the picture: zoom 1.0, centred.
    void SetViewAdap();

    int GetCurrentDeviceIndex() const;     ///< -1 when there is none
    int GetResolutionCurrentIndex() const; ///< -1 when there is none
    QString GetResolutionCurrentText(int index) const;
    int GetResolutionCurrentCount() const;
    /// The top left corner and the size of the shown picture in view coordinates; null without a picture.
    QPoint GetImageCurrentPoint() const { return geometry_.displayed().topLeft(); }
    QSize GetImageCurrentSize() const { return geometry_.displayed().size(); }
    /// The drawn rectangle in pixels of the frame, clipped to it; null when there is none or no picture.
    /// Thread-safe.
    QRect getSelectedRect() const;

    /// Zoom keys: 1 in, 2 out, by 0.1 within 0.1 to 2.0; ignored in selection mode, which keeps the view
    /// fitted.
    void SetHotKeyZoom(int direction);
    double zoom() const { return geometry_.zoom(); } ///< 1.0 fits the view
    bool isFrozen() const { return frozen_; }
    /// Takes the place of the frozen picture, and can be saved from now on; ignored while the view is live.
    void ShowStill(const QImage& still);
    bool isSelectionMode() const { return selectionMode_; }

public Q_SLOTS:
    /// Enables or disables the whole tool bar.
    void onGetEnableTools(bool enable);
    /// Cropping option 0 to 2 as in clickDeskewSign(); (2, true) starts selection mode, anything else ends
    /// it.
    void onDeskewChanged(int option, bool checked);
    /// Lets the view cover the whole screen and back. The window that hosts the view keeps its state. The
    /// Escape key leaves it too; a double click only emits doubClickSign().
    void toggleFullscreen();
    /// A frozen view keeps its picture and says so; frames that come meanwhile are dropped. Captures do not
    /// pass through the view, so they stay live, which it says too.
    void toggleFreeze();

Q_SIGNALS:
    void checkDeviceSign(int index);
    void checkModelSign(int index);
    void checkResolutionSign(int index);
    void checkAssistSign(bool checked);
    /// Cropping option 0 (automatic), 1 (second option) or 2 (drawn rectangle): the tool bar's button id
    /// less 1.
    void clickDeskewSign(int option, bool checked);
    void clickAdapSign();
    void clickFullScreenSign();
    void clickZoomSign(int direction); ///< 1 in, 2 out
    void clickRotateSign(int quarterTurns);
    void clickFreezSign();
    void doubClickSign();
    void frozenChanged(bool frozen);
    void saveFrozenClicked();                  ///< of the picture that ShowStill() was given
    void rectSelected(const QRect& rectangle); ///< in view coordinates; null when a click removed it
    /// The shown picture lies here now, in view coordinates; null without a picture.
    void pictureMoved(const QRect& displayed);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void customEvent(QEvent* event) override;

private:
    void connectToolBar();
    void takeFrame();
    void setFrame(const QImage& newest);
    void setFrozen(bool frozen);
    bool isLive() const { return !frozen_ && !frame_.isNull(); }
    void changeZoom(int direction);
    void relayout();
    void setSelection(const QRect& rectangle);
    void updateCursor();
    void paintPicture(QPainter& painter);

    FrameMailbox mailbox_;
    QImage frame_; // the shown one
    QSize shape_;  // of the newest one, also when it has gone
    FrameScaler scaler_;
    ViewGeometry geometry_;
    QRect announced_; // by pictureMoved()
    QString info_;
    ViewNotice notice_{this};
    std::atomic<bool> bookLine_{false};
    bool frozen_ = false;
    bool mouseReacts_ = true;
    bool pressed_ = false;
    QPoint pressPoint_;
    bool selectionMode_ = false;
    QRect drawing_; // view coordinates, while the mouse draws
    CropSelection selection_;
    ToolBar* toolBar_;
    ToolBarHost* toolBarHost_;
    FrozenBar* frozenBar_;
    ShownMark mark_;
    FullScreen* fullScreen_;
};

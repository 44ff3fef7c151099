#pragma once

#include "FaceCameras.h"
#include "FaceCapture.h"
#include "FaceLibrary.h"
#include "FaceWatch.h"
#include "ReadZktCard.h"
#include "TemporaryPortrait.h"

#include <QWidget>

#include <memory>

class QTemporaryFile;
class Ui_FaceVerify;

/// Compares the portrait of an identity card with the person before the face cameras, and tells whether that
/// is a living one. GUI thread only, except the frame callbacks.
class FaceVerify : public QWidget
{
    Q_OBJECT

public:
    /// `camera` is borrowed.
    FaceVerify(QWidget* parent, MirvakCamera* camera);
    ~FaceVerify() override;

    /// Opens the card reader. Where that fails the user is told, and then closefacesign() is emitted.
    void SetMainIdx(int index);
    /// Opens the face cameras and shows their live picture.
    void SetOpenCamera(int, int);

    /// Frame callbacks of the colour and the infrared camera, on their threads; `context` is the window.
    static void
    GetFaceCameraData(void* image, void* userData, int byteSize, int width, int height, void* context);
    static void
    GetFaceCameraDataIR(void* image, void* userData, int byteSize, int width, int height, void* context);

    /// The next frame of the colour camera, or null after `timeout`.
    FrameHandle GetImageSync(std::chrono::seconds timeout);
    QString getImagePath() { return capture_.files().getImagePath(); }
    QString imageSave(void* const& image, int cropMode, int colourMode);

    /// Saves a picture of the face, which the next check then uses. Without a new one the last one stays.
    void scannerimg();
    void scannerimgIR();
    void readidcard();
    int matchingface(const QString& a, const QString& b) const;
    int liveface(const QString& path) const;

Q_SIGNALS:
    /// The window is closed, or cannot be used: it may go.
    void closefacesign();

public Q_SLOTS:
    void onLiveFace();
    void onFaceVerify();
    void onOneClickFaceVerify();

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void dress();
    void connectButtons();
    void clearCard();
    void showCard(const QStringList& texts);
    void keepPortrait(const QString& path);
    void showFrame(const QImage& frame);
    void scan(FaceRole role, QString& path);
    void begin(const QString& doing);
    void end(const QString& note = QString());
    void verify();
    void judgeLife();
    bool isStarted(const FaceLibrary::Run& run);
    void closeDevices();

    std::unique_ptr<Ui_FaceVerify> ui_;
    ReadZktCard card_;
    TemporaryPortrait portrait_;
    bool isReaderOpen_ = false;
    bool hasCard_ = false;
    std::unique_ptr<QTemporaryFile> cardPortrait_; ///< null without one
    QString colourPath_;                           ///< of the face
    QString infraredPath_;                         ///< of the face
    int mainIndex_ = -1;
    FaceLibrary library_;
    FaceWatch watch_{library_};
    FaceCameras cameras_; // after what its frames go to
    FaceCapture capture_;
};

#pragma once

#include "FingerCapture.h"
#include "SensorMode.h"

#include <QDialog>

#include <memory>

class Ui_FignerPrint;

/// Takes the picture of a finger with a USB sensor, stores it as a BMP file in the folder of the captures and
/// shows it. The sensor's mode and the folder are those of the moment in which the dialog is made. Closing it
/// ends a capture. GUI thread only.
class FignerPrint : public QDialog
{
    Q_OBJECT

public:
    FignerPrint(QWidget* parent, void*);
    ~FignerPrint() override;

    /// Opens the sensor (1.5 s at most) and waits for a finger beside the dialog. An empty path: "./fp1.bmp".
    void GetFPFromDev(const QString& path);
    /// The sensor's mode as its file has it: 1, 2 or 3.
    int getfpmode() const { return mode_.read(); }
    /// Prepares the library without a capture. @return 0, or what it says
    int initfp() const;
    void deinitfp() {}

    /// Shows a picture, which may be a file's.
    void setimage(const QString& file);
    void setimage(const QPixmap& picture);
    void setimage(const QImage& picture);

Q_SIGNALS:
    void setUIStatus(const QString& text);
    /// A picture has been stored.
    void setImg2Thumb(const QString& path);

public Q_SLOTS:
    void onGetUIStatus(const QString& text);
    /// Changes the mode in its file, for the next dialog.
    void changefptpye();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void capture();
    void readNews();
    void tell(const FingerCapture::News& news);

    std::unique_ptr<Ui_FignerPrint> ui_;
    const QString folder_;
    const SensorMode mode_{SensorMode::usualFile()};
    const int sensorMode_;
    FingerCapture capture_; ///< tells this dialog: ends first
};

#pragma once

#include "CropView.h"
#include "Workers.h"

#include <QDialog>

class QPushButton;

/// Asks which part of a picture file is the page; accepted with Crop. The picture is read, and the page
/// looked for, on another thread. GUI thread only.
class CropDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CropDialog(const QString& path, QWidget* parent);
    ~CropDialog() override; ///< waits for the picture that is being read

    const PictureEdits::Corners& corners() const { return view_->corners(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeButtons();
    void read(const QString& path);

    CropView* view_;
    QPushButton* whole_ = nullptr;
    QPushButton* crop_ = nullptr;
    Workers workers_;
};

#pragma once

#include <QWidget>

/// A red dot and the length of the film in a corner of the preview, for as long as a film is being made,
/// whichever windows are open. GUI thread only.
class RecordingMark : public QWidget
{
    Q_OBJECT

public:
    /// `view` is the preview. It starts hidden.
    explicit RecordingMark(QWidget& view);

    /// The film has so many seconds now.
    void showLength(int seconds);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString length_;
};

#pragma once

#include <QObject>

class VideoView;

/// Says on standard output when the first camera picture has been painted, for measurements of the start and
/// for scripts that wait for it. Only with the environment variable LUMRO_START_REPORT.
class StartReport : public QObject
{
    Q_OBJECT

public:
    /// `view` is borrowed for the life of this object.
    explicit StartReport(VideoView& view);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    VideoView& view_;
};

#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

class Ui_VideoRecord;

/// Counts the seconds of a recording and ends it; tells when it has ended by itself. Blocks its parent and
/// stays on top of it; closing it by other means than the button leaves the recording running. GUI thread
/// only.
class VideoRecord : public QWidget
{
    Q_OBJECT

public:
    explicit VideoRecord(QWidget* parent = nullptr);
    ~VideoRecord() override;

    /// Asked at each tick how many seconds the film has; without it, the ticks are counted.
    void setFilmTime(std::function<int()> seconds) { filmTime_ = std::move(seconds); }
    /// Shows the window for a recording into `path` that has just begun.
    void StartRecord(const QString& path);
    /// Shows it again.
    void Resume();
    /// A line below the seconds; an empty one takes the last away.
    void ShowNote(const QString& note);
    /// The recording has ended, but not by the button: the film has so many seconds, `why` stays to be read.
    void ShowEnded(int seconds, const QString& why);
    /// Whether the recording that it was started for has not ended.
    bool isRecording() const { return recording_; }

Q_SIGNALS:
    void recordstoped();                            ///< the recording is to end
    void videoRecordGenerated(const QString& path); ///< it has ended and the user has been asked
    void leftRunning();                             ///< closed, and the recording goes on

public Q_SLOTS:
    void onStop();
    void onTimeout();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int filmTime(int counted) const { return filmTime_ ? filmTime_() : counted; }
    void showSeconds(const QString& prefix, int seconds);

    std::unique_ptr<Ui_VideoRecord> ui_;
    QString prefix_;
    QString filePath_;
    QTimer timer_{this};
    std::function<int()> filmTime_;
    int seconds_ = 0;
    bool recording_ = false;
};

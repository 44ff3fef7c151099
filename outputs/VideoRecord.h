#pragma once

#include <QTimer>
#include <QWidget>

#include <memory>

class Ui_VideoRecord;

/// Counts the seconds of a recording and ends it. Blocks its parent and stays on top of it; closing it by
/// other means than the button leaves the recording running. GUI thread only.
class VideoRecord : public QWidget
{
    Q_OBJECT

public:
    explicit VideoRecord(QWidget* parent = nullptr);
    ~VideoRecord() override;

    /// Shows the window for a recording into `path` that has just begun.
    void StartRecord(const QString& path);
    /// Shows it again, `seconds` after the beginning of the recording.
    void Resume(int seconds);
    /// Whether the recording that it was started for has not been ended by its button.
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
    void showSeconds(int seconds);

    std::unique_ptr<Ui_VideoRecord> ui_;
    QString prefix_;
    QString filePath_;
    QTimer timer_;
    int seconds_ = 0;
    bool recording_ = false;
};

#pragma once

#include <QObject>
#include <QSize>
#include <QTimer>

#include <atomic>
#include <memory>
#include <vector>

class CaptureDesk;
class Job;
class MirvakCamera;
class MirvakRecord;
class QWidget;
class VideoRecord;

/// Records the main camera's frames into an MP4 file in the save directory, with a small window that counts
/// the seconds. GUI thread only, except record().
class RecordControl : public QObject
{
    Q_OBJECT

public:
    /// Where the frames come from.
    struct Source
    {
        void* device = nullptr;
        int resolutionIndex = -1;
        QString resolutionText; ///< "width * height"
        int rotation = 0;       ///< quarter turns of the view
    };

    /// `desk` and `camera` are borrowed for the life of this object; the record window belongs to `window`.
    RecordControl(CaptureDesk& desk, MirvakCamera& camera, QWidget& window, QObject* parent = nullptr);
    /// Ends a recording that runs.
    ~RecordControl() override;

    /// Behind the video button. While a recording runs whose window was closed, shows that window again, with
    /// or without a camera.
    void start(const Source& source);
    /// Ends a recording that runs, without questions; its file is complete.
    void finish();
    bool isRecording() const { return recording_; } ///< thread-safe

    /// Capture thread: hands a frame of any size to the recording, if one runs.
    void record(void* image);
    /// Looks after the recording, four times a second: one that has failed, or whose camera stays away, is
    /// ended and the user told.
    void watch();

    const VideoRecord* window() const { return recordWindow_; } ///< null before the first recording

Q_SIGNALS:
    void filming(int seconds); ///< long is the film now; at its begin and then at each watch()
    void ended();              ///< in whatever way
    /// The size was refused, and the user wants this one of the camera's resolutions and then the film.
    void filmSizeWanted(int resolutionIndex);

private:
    QSize sizeAt(void* device, int resolutionIndex) const;
    int fittingResolution(void* device) const;
    void refuseSize(void* device);
    QSize sizeOf(const Source& source) const;
    void open(const QString& folder, QSize size);
    void makeParts();
    void watchCamera();
    int filmSeconds() const;
    void stop();
    int stopRecorder();
    void showCopying();
    void watchCopying();
    void tellSilence();
    void tellEnded(int result);
    static QString whyEnded(int result);
    static QString whyNothing(int result);
    void list(const QString& path);

    CaptureDesk& desk_;
    MirvakCamera& camera_;
    QWidget& window_;
    VideoRecord* recordWindow_ = nullptr;
    std::unique_ptr<MirvakRecord> recorder_; ///< made for the first recording, before recording_ is set
    QString path_;
    QTimer watch_;
    QTimer copyWatch_;
    std::shared_ptr<Job> copy_; ///< while a film that has ended is being rewritten
    std::atomic<bool> recording_{false};
    std::atomic<unsigned> frames_{0}; ///< that the recording took
    unsigned framesSeen_ = 0;
    int silentTicks_ = 0;
    std::vector<unsigned char> pixels_; ///< of the capture thread
};

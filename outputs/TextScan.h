#pragma once

#include "Workers.h"

#include <QObject>
#include <QTimer>

#include <memory>

class CaptureDesk;
class Job;
class MirvakOCR;

/// Makes a text document of what lies before the camera: a capture that is saved as a picture, its text
/// recognised and written as RTF into the save directory. The recognition works on a thread of its own, with
/// a busy cursor, and can be cancelled; meanwhile the window lives on and another call only says so. GUI
/// thread only.
class TextScan : public QObject
{
    Q_OBJECT

public:
    /// `desk` is borrowed for the life of this object. `modelDirectory`: where the recogniser's models lie.
    TextScan(CaptureDesk& desk, QString modelDirectory, QObject* parent = nullptr);
    /// Stops a recognition that runs; its text is lost, its picture stays.
    ~TextScan() override;

    /// The folder of the models beside the program.
    static QString installedModels();

    /// Behind the text recognition button.
    void scan();
    bool isRunning() const { return engine_ != nullptr; }

private:
    struct Result
    {
        bool isRead = false, isWritten = false;
        QString
            document; ///< its path, even when it could not be written; empty when there is no folder for it
    };

    QString capture();
    bool start(const QString& picture);
    static Result recognise(MirvakOCR& engine, const QString& picture, const Job& job);
    void watch();
    void finish(const Result& result);
    void tellNothing();

    CaptureDesk& desk_;
    QString models_;
    QTimer watch_; ///< carries progress and stop between the engine and the job
    std::shared_ptr<Job> job_;
    std::unique_ptr<MirvakOCR> engine_; ///< of the recognition that runs
    Workers workers_;                   ///< last: they use the engine
};

#pragma once

#include "FrameHandle.h"
#include "Workers.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class CaptureDesk;
class Job;
class MirvakCamera;
class QWidget;

/// Makes flat pages of an open book: the frame is saved as it is, then flattened on a thread of its own with
/// a busy cursor, which also saves what comes out, one capture a page. Meanwhile the window lives on; another
/// call only says so. Cancelling drops the pages, the frame's own picture stays. GUI thread only.
class BookScan : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        bool removeFinger = false;
        bool doublePage = false;
        bool documentProcess = false; ///< the pages become black and white
    };
    /// Asked for after the frame has been taken.
    using AskOptions = std::function<Options()>;
    /// As MirvakCamera::MirvakImage_BookFlat. Called on a thread of its own.
    using Flatten =
        std::function<int(void* frame, bool removeFinger, int pageMode, void*& left, void*& right)>;
    /// Saves a page as it is, but in these colours (as of CaptureProcessor); its path, or empty. Called on a
    /// thread of its own.
    using SavePage = std::function<QString(void* page, int colourMode)>;

    /// `desk` and `camera` are borrowed for the life of this object. `window` is what messages stand over.
    BookScan(CaptureDesk& desk, MirvakCamera& camera, QWidget* window, AskOptions options, SavePage savePage);
    /// Waits for a flattening that runs; pages that are not saved yet are lost.
    ~BookScan() override;

    /// @param usbId  of the camera that is shown: 8 lowercase hexadecimal digits  @param bookLine  whether
    /// the guide line for the spine is on
    void scan(const QString& usbId, bool bookLine);
    bool isRunning() const { return job_ != nullptr; }
    /// For tests: something else that flattens.
    void setFlatten(Flatten flatten) { flatten_ = std::move(flatten); }

private:
    struct Result
    {
        int code = 0;
        QStringList paths; ///< of the saved pages, left before right
        int failed = 0;    ///< pages that could not be saved
    };

    bool isPossible(const QString& usbId, bool bookLine);
    void start(FrameHandle frame, const Options& options);
    Result work(void* frame, const Options& options, const Job& job) const;
    void save(Result& result, void* page, bool isDocument) const;
    void finish(const Result& result);

    CaptureDesk& desk_;
    MirvakCamera& camera_;
    QWidget* window_;
    AskOptions askOptions_;
    SavePage savePage_;
    Flatten flatten_;
    std::shared_ptr<Job> job_;
    Workers workers_; ///< last: they use the camera library
};

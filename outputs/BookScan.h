#pragma once

#include "FrameHandle.h"
#include "Workers.h"

#include <QObject>

#include <functional>
#include <memory>

class CaptureDesk;
class Job;
class MirvakCamera;
class QWidget;

/// Makes flat pages of an open book: the frame is saved as it is, flattened on a thread of its own with a
/// busy cursor, and what comes out is saved as one capture a page. Meanwhile the window lives on; another
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

    /// `desk` and `camera` are borrowed for the life of this object. `window` is what messages stand over.
    BookScan(CaptureDesk& desk, MirvakCamera& camera, QWidget* window, AskOptions options);
    /// Waits for a flattening that runs; its pages are lost.
    ~BookScan() override;

    /// @param usbId  of the camera that is shown: 8 lowercase hexadecimal digits  @param bookLine  whether
    /// the guide line for the spine is on
    void scan(const QString& usbId, bool bookLine);
    bool isRunning() const { return job_ != nullptr; }
    /// For tests: something else that flattens.
    void setFlatten(Flatten flatten) { flatten_ = std::move(flatten); }

private:
    struct Result;

    bool isPossible(const QString& usbId, bool bookLine);
    void start(FrameHandle frame, Options options);
    void finish(const Result& result);
    void savePage(void* page);

    CaptureDesk& desk_;
    MirvakCamera& camera_;
    QWidget* window_;
    AskOptions askOptions_;
    Flatten flatten_;
    Options options_; ///< of the flattening that runs
    std::shared_ptr<Job> job_;
    Workers workers_; ///< last: they use the camera library
};

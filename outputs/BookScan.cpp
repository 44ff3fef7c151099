#include "BookScan.h"

#include "BookFlatModels.h"
#include "CaptureDesk.h"
#include "Dialogs.h"
#include "Job.h"
#include "mirvakcamera.h"

#include <QApplication>

namespace {

constexpr std::chrono::seconds frameTimeout(10);
constexpr int onePage = 1, twoPages = 2;           // of MirvakImage_BookFlat
constexpr int plainColours = 0, blackAndWhite = 2; // as of CaptureProcessor

} // namespace

BookScan::BookScan(
    CaptureDesk& desk, MirvakCamera& camera, QWidget* window, AskOptions options, SavePage savePage)
    : desk_(desk), camera_(camera), window_(window), askOptions_(std::move(options)),
      savePage_(std::move(savePage)),
      flatten_([&camera](void* frame, bool removeFinger, int pageMode, void*& left, void*& right) {
          return camera.MirvakImage_BookFlat(frame, removeFinger, pageMode, left, right);
      })
{
}

BookScan::~BookScan()
{
    if (!isRunning())
        return;
    job_->stop();
    workers_.finish();
    QApplication::restoreOverrideCursor();
}

/// These two are told even while a dialog is open.
bool BookScan::isPossible(const QString& usbId, bool bookLine)
{
    if (!mirvak::isBookFlatModel(usbId.toStdString())) {
        Dialogs::warn(window_, tr("This device does not support this feature!"));
        return false;
    }
    if (!bookLine)
        Dialogs::warn(window_, tr("Please turn on the book-line first!"));
    return bookLine;
}

void BookScan::scan(const QString& usbId, bool bookLine)
{
    if (!isPossible(usbId, bookLine))
        return;
    if (isRunning())
        return desk_.showNotice(tr("The book is still being flattened."));
    if (!desk_.mayCapture())
        return;
    FrameHandle frame = desk_.takeFrame(frameTimeout);
    if (!frame)
        return desk_.showNotice(tr("The camera delivers no picture."));
    desk_.saveFrame(frame.get(), plainColours);
    start(std::move(frame), askOptions_());
}

void BookScan::start(FrameHandle frame, const Options& options)
{
    job_ = std::make_shared<Job>();
    const std::shared_ptr<void> shared(std::move(frame));
    const bool started = workers_.start([this, shared, options, job = job_] {
        const Result result = work(shared.get(), options, *job);
        QMetaObject::invokeMethod(
            this, [this, result] { finish(result); }, Qt::QueuedConnection);
    });
    QApplication::setOverrideCursor(Qt::BusyCursor);
    if (started)
        desk_.showJob(tr("The book is being flattened."), job_);
    else
        finish({MIRVAK_NO_MEMORY, {}, 0});
}

// Worker thread. What is cancelled in time leaves no page; nobody gets one of two.
BookScan::Result BookScan::work(void* frame, const Options& options, const Job& job) const
{
    void* left = nullptr;
    void* right = nullptr;
    Result result;
    result.code = flatten_(frame, options.removeFinger, options.doublePage ? twoPages : onePage, left, right);
    const FrameHandle leftPage = ownImage(camera_, left);
    const FrameHandle rightPage = ownImage(camera_, right);
    if (result.code != MIRVAK_OK || job.isStopped())
        return result;
    save(result, left, options.documentProcess);
    if (options.doublePage)
        save(result, right, options.documentProcess);
    return result;
}

void BookScan::save(Result& result, void* page, bool isDocument) const
{
    if (!page)
        return;
    const QString path = savePage_(page, isDocument ? blackAndWhite : plainColours);
    if (path.isEmpty())
        ++result.failed;
    else
        result.paths << path;
}

void BookScan::finish(const Result& result)
{
    workers_.finish();
    const bool isStopped = job_->isStopped() && result.paths.isEmpty();
    job_.reset();
    QApplication::restoreOverrideCursor();
    for (const QString& path : result.paths)
        desk_.addThumbnail(path);
    if (isStopped)
        desk_.showNotice(tr("The flattening was cancelled. The picture itself is saved."));
    else if (result.code != MIRVAK_OK)
        Dialogs::error(window_, tr("Book flat failed!"));
    else if (result.failed > 0)
        desk_.showNotice(
            tr("A page of the book could not be saved. Please check the folder of the pictures."));
}

#include "BookScan.h"

#include "BookFlatModels.h"
#include "CaptureDesk.h"
#include "CaptureProcessor.h"
#include "Dialogs.h"
#include "Job.h"
#include "mirvakcamera.h"

#include <QApplication>

namespace {

constexpr std::chrono::seconds frameTimeout(10);
constexpr int onePage = 1, twoPages = 2;           // of MirvakImage_BookFlat
constexpr int plainColours = 0, blackAndWhite = 2; // as of CaptureProcessor

} // namespace

struct BookScan::Result
{
    int code = MIRVAK_OK;
    FrameHandle left, right;
};

BookScan::BookScan(CaptureDesk& desk, MirvakCamera& camera, QWidget* window, AskOptions options)
    : desk_(desk), camera_(camera), window_(window), askOptions_(std::move(options)),
      flatten_([&camera](void* frame, bool removeFinger, int pageMode, void*& left, void*& right) {
          return camera.MirvakImage_BookFlat(frame, removeFinger, pageMode, left, right);
      })
{
}

BookScan::~BookScan()
{
    if (!isRunning())
        return;
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

void BookScan::start(FrameHandle frame, Options options)
{
    options_ = options;
    job_ = std::make_shared<Job>();
    const std::shared_ptr<void> shared(std::move(frame));
    const bool started = workers_.start([this, shared, options] {
        const auto result = std::make_shared<Result>();
        void* left = nullptr;
        void* right = nullptr;
        result->code = flatten_(
            shared.get(), options.removeFinger, options.doublePage ? twoPages : onePage, left, right);
        result->left = ownImage(camera_, left);
        result->right = ownImage(camera_, right);
        QMetaObject::invokeMethod(
            this, [this, result] { finish(*result); }, Qt::QueuedConnection);
    });
    QApplication::setOverrideCursor(Qt::BusyCursor);
    if (started)
        desk_.showJob(tr("The book is being flattened."), job_);
    else
        finish({MIRVAK_NO_MEMORY, {}, {}});
}

void BookScan::finish(const Result& result)
{
    workers_.finish();
    const bool isStopped = job_->isStopped();
    job_.reset();
    QApplication::restoreOverrideCursor();
    if (isStopped)
        return desk_.showNotice(tr("The flattening was cancelled. The picture itself is saved."));
    if (result.code != MIRVAK_OK) {
        Dialogs::error(window_, tr("Book flat failed!"));
        return;
    }
    savePage(result.left.get());
    if (options_.doublePage)
        savePage(result.right.get());
}

void BookScan::savePage(void* page)
{
    if (page)
        desk_.addThumbnail(
            desk_.saveCropped(page, cropping::none, options_.documentProcess ? blackAndWhite : plainColours));
}

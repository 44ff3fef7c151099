#include "BarcodeScan.h"

#include "BarCode.h"
#include "CaptureDesk.h"
#include "ComeForward.h"
#include "InputShield.h"
#include "Job.h"
#include "mirvakcamera.h"

#include <QPointer>

namespace {

constexpr std::chrono::seconds frameTimeout(10);
constexpr int noColours = 0;
constexpr int deskewMargin = 10; // pixels
const QString separator = QStringLiteral("   ");

} // namespace

BarcodeScan::BarcodeScan(CaptureDesk& desk, MirvakCamera& camera) : desk_(desk), camera_(camera) {}

BarcodeScan::~BarcodeScan()
{
    if (job_)
        job_->stop();
}

void BarcodeScan::scan()
{
    if (job_)
        return desk_.showNotice(tr("The codes are still being read."));
    if (isReading_ || !desk_.mayCapture())
        return;
    isReading_ = true;
    const QPointer<BarcodeScan> self(this);
    bool isStarted = false;
    {
        const InputShield shield; // its end lets events in
        isStarted = startReading();
    }
    if (self && !isStarted)
        isReading_ = false;
}

bool BarcodeScan::startReading()
{
    // Shared, because a job is copied.
    std::shared_ptr<void> frame = capture();
    if (!frame)
        return false;
    job_ = std::make_shared<Job>();
    const auto read = [this, frame, job = job_.get()]() mutable {
        const QString text = this->read(frame.get(), *job);
        frame.reset();
        QMetaObject::invokeMethod(
            this, [this, text] { show(text); }, Qt::QueuedConnection);
    };
    if (!workers_.start(read)) {
        job_.reset();
        return false;
    }
    desk_.showJob(tr("The codes are being read."), job_);
    return true;
}

FrameHandle BarcodeScan::capture()
{
    FrameHandle frame = desk_.takeFrame(frameTimeout);
    if (frame)
        desk_.saveFrame(frame.get(), noColours);
    else
        desk_.showNotice(tr("The camera delivers no picture."));
    return frame;
}

// On the worker's thread.
QString BarcodeScan::read(void* frame, Job& job) const
{
    const auto progress = [](int done, int count, void* context) {
        auto* told = static_cast<Job*>(context);
        told->reach(double(done) / count);
        return told->isStopped() ? 1 : 0;
    };
    camera_.MirvakImage_Deskew(frame, deskewMargin);
    const int count = camera_.MirvakZBarcode_DiscernWatched(frame, progress, &job);
    QString text;
    for (int i = 0; i < count; ++i)
        text += QString::fromStdString(camera_.MirvakZBarcode_GetData(i)) + separator;
    return text;
}

void BarcodeScan::show(const QString& text)
{
    const bool isStopped = job_->isStopped();
    isReading_ = false;
    job_.reset();
    if (text.isEmpty()) {
        desk_.showNotice(isStopped ? tr("Reading the codes was cancelled. The picture itself is saved.")
                                   : tr("No code was found."));
        return;
    }
    if (!window_)
        window_ = std::make_unique<BarCode>();
    window_->SetCodeData(text);
    comeForward(*window_);
}

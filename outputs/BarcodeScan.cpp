#include "BarcodeScan.h"

#include "BarCode.h"
#include "CaptureDesk.h"
#include "ComeForward.h"
#include "InputShield.h"
#include "mirvakcamera.h"

#include <QPointer>

namespace {

constexpr std::chrono::seconds frameTimeout(10);
constexpr int noColours = 0;
constexpr int deskewMargin = 10; // pixels
const QString separator = QStringLiteral("   ");

} // namespace

BarcodeScan::BarcodeScan(CaptureDesk& desk, MirvakCamera& camera) : desk_(desk), camera_(camera) {}

BarcodeScan::~BarcodeScan() = default;

void BarcodeScan::scan()
{
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
    const auto job = [this, frame]() mutable {
        const QString text = read(frame.get());
        frame.reset();
        QMetaObject::invokeMethod(
            this, [this, text] { show(text); }, Qt::QueuedConnection);
    };
    return frame && workers_.start(job);
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
QString BarcodeScan::read(void* frame) const
{
    camera_.MirvakImage_Deskew(frame, deskewMargin);
    const int count = camera_.MirvakZBarcode_Discern(frame);
    QString text;
    for (int i = 0; i < count; ++i)
        text += QString::fromStdString(camera_.MirvakZBarcode_GetData(i)) + separator;
    return text;
}

void BarcodeScan::show(const QString& text)
{
    isReading_ = false;
    if (text.isEmpty()) {
        desk_.showNotice(tr("No code was found."));
        return;
    }
    if (!window_)
        window_ = std::make_unique<BarCode>();
    window_->SetCodeData(text);
    comeForward(*window_);
}

#include "PrinterLink.h"

#include "Job.h"

#include <QPointer>

namespace {

constexpr std::size_t bufferBytes = 4096, chunkBytes = 64;
constexpr std::size_t commandTimeoutMs = 10000, dataTimeoutMs = 600000;

/// Tells the job how many of the bytes have gone out.
struct Progress
{
    explicit Progress(Job& of, const PrintOrder& order) : job(of)
    {
        for (const PrintOrder::Step& step : order.steps)
            total += step.bytes.size();
    }
    static void onWritten(const std::uint8_t*, std::size_t len, void* user)
    {
        auto* self = static_cast<Progress*>(user);
        self->done += static_cast<qint64>(len);
        self->job.reach(double(self->done) / double(self->total));
    }

    Job& job;
    qint64 done = 0, total = 0;
};

std::size_t timeoutOf(PrintOrder::Kind kind)
{
    return kind == PrintOrder::Kind::Data ? dataTimeoutMs : commandTimeoutMs;
}

} // namespace

PrinterLink::PrinterLink(QObject* parent) : QObject(parent), stream_(bufferBytes, chunkBytes) {}

PrinterLink::~PrinterLink()
{
    giveUp();
}

bool PrinterLink::open(const QByteArray& path)
{
    giveUp();
    const bool isOpened = stream_.Open(path.constData());
    printer_.SetIO(&stream_);
    return isOpened;
}

void PrinterLink::close()
{
    giveUp();
    printer_.Close();
}

void PrinterLink::giveUp()
{
    waiting_.clear();
    if (job_)
        job_->stop();
    workers_.finish();
    job_.reset();
}

void PrinterLink::send(const PrintSource& source)
{
    waiting_.push_back(source);
    if (!job_)
        startNext();
}

void PrinterLink::startNext()
{
    if (waiting_.empty())
        return;
    const PrintSource source = std::move(waiting_.front());
    waiting_.pop_front();
    job_ = std::make_shared<Job>();
    const auto work = [this, source, job = job_] {
        const Outcome outcome = carryOut(source, *job);
        QMetaObject::invokeMethod(
            this, [=] { finish(job, outcome); }, Qt::QueuedConnection);
    };
    if (workers_.start(work))
        Q_EMIT began(job_);
    else
        finish(std::shared_ptr<Job>(job_), {PrintResult::Failed, true});
}

// On the worker's thread, as is what it calls.
PrinterLink::Outcome PrinterLink::carryOut(const PrintSource& source, Job& job)
{
    const PrintOrder order = source();
    const bool canSend = order.problem == PrintResult::Sent;
    return {canSend ? transfer(order, job) : order.problem, order.isPrint};
}

PrintResult PrinterLink::transfer(const PrintOrder& order, Job& job)
{
    Progress progress(job, order);
    stream_.watch(&job);
    printer_.SetWritedEvent(&Progress::onWritten, &progress);
    int written = 0;
    for (const PrintOrder::Step& step : order.steps) {
        if (job.isStopped())
            written = 0;
        else
            // One write takes what the printer has room for; the rest must not be lost.
            written = printer_.WriteUntilLength(reinterpret_cast<const std::uint8_t*>(step.bytes.constData()),
                                                static_cast<std::size_t>(step.bytes.size()),
                                                timeoutOf(step.kind));
    }
    printer_.SetWritedEvent(nullptr, nullptr);
    stream_.watch(nullptr);
    // What the last command says holds for all: a printer that has lost some of the order takes no more.
    if (written > 0)
        return PrintResult::Sent;
    return job.isStopped() ? PrintResult::Cancelled : PrintResult::Failed;
}

void PrinterLink::finish(const std::shared_ptr<Job>& job, const Outcome& outcome)
{
    if (job != job_)
        return;        // given up meanwhile
    workers_.finish(); // it has told all, and is about to leave; the next one takes over what it has touched
    if (job_->isStopped())
        waiting_.clear();
    job_.reset();
    const QPointer<PrinterLink> self(this);
    if (outcome.isPrint)
        Q_EMIT ended(outcome.result);
    if (self && !job_)
        startNext();
}

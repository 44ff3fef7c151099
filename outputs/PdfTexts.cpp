#include "PdfTexts.h"

#include "CaptureDesk.h"
#include "Job.h"
#include "Settings.h"
#include "mirvakcamera.h"
#include "mirvakocr.h"

#include <algorithm>

namespace {

constexpr std::chrono::milliseconds watchInterval(100);

MirvakPdfWord wordOf(const MirvakOCRWord& read)
{
    MirvakPdfWord word;
    word.text = read.text;
    std::transform(
        std::begin(read.corners), std::end(read.corners), word.corners, [](const MirvakOCRPoint& corner) {
            return MirvakPointF{corner.x, corner.y};
        });
    word.line = read.line;
    word.isSpaceBehind = read.isSpaceBehind;
    return word;
}

pdfFile::Text textOf(const MirvakOCR& engine)
{
    std::vector<MirvakOCRWord> read;
    int width = 0, height = 0;
    engine.MirvakOCR_GetWords(read, width, height);
    pdfFile::Text text(read.size());
    std::transform(read.begin(), read.end(), text.begin(), wordOf);
    return text;
}

} // namespace

PdfTexts::PdfTexts(CaptureDesk& desk, MirvakCamera& camera, QString modelDirectory, QObject* parent)
    : QObject(parent), desk_(desk), camera_(camera), models_(std::move(modelDirectory))
{
    watch_.setInterval(watchInterval);
    connect(&watch_, &QTimer::timeout, this, &PdfTexts::watch);
}

PdfTexts::~PdfTexts()
{
    giveUp();
}

void PdfTexts::add(const QString& pdf, const QStringList& pictures, const pdfFile::Form& form)
{
    if (!settings::pdfText.read())
        return;
    auto task = std::make_shared<Task>(Task{HeldFile(pdf), pdf, {}, form});
    for (const QString& picture : pictures)
        task->pictures.emplace_back(picture);
    waiting_.push_back(std::move(task));
    if (!isRunning())
        startNext();
}

void PdfTexts::startNext()
{
    if (waiting_.empty())
        return;
    job_ = std::make_shared<Job>();
    engine_ = std::make_unique<MirvakOCR>();
    const std::shared_ptr<Task> task = waiting_.front();
    waiting_.pop_front();
    const std::weak_ptr<Job> asked = job_;
    const bool isStarted = workers_.start([this, task, asked, job = job_.get(), engine = engine_.get()] {
        const End end = work(*engine, *task, *job);
        const auto report = [this, asked, end] {
            if (!asked.expired()) // else it was given up meanwhile
                finish(end);
        };
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    });
    if (!isStarted)
        return finish(End::noReader);
    watch_.start();
    desk_.showJob(tr("The text of the PDF is being recognised."), job_);
}

void PdfTexts::watch()
{
    int percent = 0;
    if (job_->count() > 0 && engine_->MirvakOCR_GetProgress(percent) == MIRVAK_OCR_OK)
        job_->reach((job_->done() + percent / 101.0) / job_->count());
    if (job_->isStopped())
        engine_->MirvakOCR_Stop();
}

// Worker thread.
PdfTexts::End PdfTexts::work(MirvakOCR& engine, const Task& task, Job& job)
{
    pdfFile::Texts texts;
    const End read = recognise(engine, task, job, texts);
    engine.MirvakOCR_Deinit();
    if (read != End::done)
        return read;
    QStringList pictures;
    bool isSame = task.pdf.isUnchanged();
    for (const HeldFile& picture : task.pictures) {
        isSame = isSame && picture.isUnchanged();
        pictures << picture.path();
    }
    if (!isSame)
        return End::changed;
    const auto isStillThere = [&] { return !job.isStopped() && task.pdf.isSameAs(HeldFile(task.path)); };
    const pdfFile::Result result =
        pdfFile::replace(camera_, pictures, task.path, &job, task.form, texts, isStillThere);
    if (result.code == MIRVAK_OK)
        return End::done;
    if (job.isStopped())
        return End::stopped;
    return result.code == MIRVAK_EXISTS ? End::changed : End::notWritten;
}

// Worker thread. A page on which nothing is read is one without text; its place in `texts` stays empty.
PdfTexts::End PdfTexts::recognise(MirvakOCR& engine, const Task& task, Job& job, pdfFile::Texts& texts) const
{
    if (engine.MirvakOCR_Init(models_.toUtf8().constData()) != MIRVAK_OCR_OK)
        return End::noReader;
    bool isRead = false;
    const int count = int(task.pictures.size());
    for (const HeldFile& picture : task.pictures) {
        job.reach(int(texts.size()), count);
        if (job.isStopped())
            return End::stopped;
        texts.emplace_back();
        const int code = engine.MirvakOCR_Discern(picture.path().toUtf8().constData());
        if (code == MIRVAK_OCR_OK)
            texts.back() = textOf(engine);
        else if (code == MIRVAK_OCR_NO_MODEL || code == MIRVAK_OCR_NO_MEMORY)
            return End::noReader;
        isRead = isRead || !texts.back().empty();
    }
    if (job.isStopped())
        return End::stopped;
    return isRead ? End::done : End::noText;
}

void PdfTexts::finish(End end)
{
    workers_.finish();
    watch_.stop();
    engine_.reset();
    job_.reset();
    if (end != End::done)
        desk_.showNotice(noticeOf(end));
    startNext();
}

QString PdfTexts::noticeOf(End end)
{
    switch (end) {
    case End::noText:
        return tr("No text was found in the PDF. It stays as it is.");
    case End::stopped:
        return tr("Cancelled: the PDF stays without text.");
    case End::noReader:
        return tr("The text could not be recognised. The PDF stays without text.");
    case End::changed:
        return tr("The PDF or its pictures were changed meanwhile. It stays without text.");
    default:
        break;
    }
    return tr("The text could not be written. The PDF stays without text.");
}

void PdfTexts::giveUp()
{
    waiting_.clear();
    if (!job_)
        return;
    job_->stop();
    engine_->MirvakOCR_Stop();
    workers_.finish();
    watch_.stop();
    engine_.reset();
    job_.reset();
}

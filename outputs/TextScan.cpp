#include "TextScan.h"

#include "CaptureDesk.h"
#include "FileNaming.h"
#include "Job.h"
#include "Settings.h"
#include "mirvakocr.h"

#include <QApplication>
#include <QPixmap>

namespace {

constexpr std::chrono::seconds frameTimeout(10);
constexpr std::chrono::milliseconds watchInterval(100);

} // namespace

TextScan::TextScan(CaptureDesk& desk, QString modelDirectory, QObject* parent)
    : QObject(parent), desk_(desk), models_(std::move(modelDirectory))
{
    watch_.setInterval(watchInterval);
    connect(&watch_, &QTimer::timeout, this, &TextScan::watch);
}

TextScan::~TextScan()
{
    if (!isRunning())
        return;
    engine_->MirvakOCR_Deinit();
    workers_.finish();
    QApplication::restoreOverrideCursor();
}

QString TextScan::installedModels()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/model/zh");
}

void TextScan::scan()
{
    if (isRunning())
        return desk_.showNotice(tr("The text is still being recognised."));
    if (!desk_.mayCapture())
        return;
    const QString picture = capture();
    if (!picture.isEmpty() && !start(picture))
        tellNothing();
}

QString TextScan::capture()
{
    const FrameHandle frame = desk_.takeFrame(frameTimeout);
    if (!frame) {
        desk_.showNotice(tr("The camera delivers no picture."));
        return {};
    }
    return desk_.saveFrame(frame.get(), settings::scanType.read());
}

bool TextScan::start(const QString& picture)
{
    auto engine = std::make_unique<MirvakOCR>();
    if (engine->MirvakOCR_Init(models_.toUtf8().constData()) != MIRVAK_OCR_OK)
        return false;
    engine_ = std::move(engine);
    job_ = std::make_shared<Job>();
    const bool started = workers_.start([this, picture, engine = engine_.get(), job = job_] {
        const Result result = recognise(*engine, picture, *job);
        QMetaObject::invokeMethod(
            this, [this, result] { finish(result); }, Qt::QueuedConnection);
    });
    if (!started) {
        engine_.reset();
        job_.reset();
        return false;
    }
    QApplication::setOverrideCursor(Qt::BusyCursor);
    watch_.start();
    desk_.showJob(tr("The text is being recognised."), job_);
    return true;
}

// Worker thread.
TextScan::Result TextScan::recognise(MirvakOCR& engine, const QString& picture, const Job& job)
{
    Result result;
    result.isRead =
        engine.MirvakOCR_Discern(picture.toUtf8().constData()) == MIRVAK_OCR_OK && !job.isStopped();
    if (result.isRead) {
        ConfigSettings store;
        const QString folder = FileNaming(store).targetDirectory();
        if (!folder.isEmpty()) {
            engine.MirvakOCR_MarkUnsure(settings::markUnsure.read(store));
            result.document = FileNaming::stampedPath(folder, QStringLiteral("rtf"));
            const auto save = [&](const QString& path) {
                return engine.MirvakOCR_Save(path.toUtf8().constData());
            };
            result.isWritten =
                FileNaming::saveNew(result.document, int(MIRVAK_OCR_EXISTS), save) == MIRVAK_OCR_OK;
        }
    }
    engine.MirvakOCR_Deinit();
    return result;
}

void TextScan::finish(const Result& result)
{
    workers_.finish();
    const bool isStopped = job_->isStopped();
    engine_.reset();
    job_.reset();
    watch_.stop();
    QApplication::restoreOverrideCursor();
    if (!result.isRead && isStopped)
        desk_.showNotice(tr("The recognition was cancelled. The picture itself is saved."));
    else if (!result.isRead)
        tellNothing();
    else if (!result.isWritten)
        desk_.showNotice(tr("The text could not be written. The picture itself is saved."));
    else
        desk_.showNotice(QString());
    if (!result.document.isEmpty())
        desk_.addDocument(result.document,
                          QPixmap(QStringLiteral(":/images/common/images/common/ThumbnailRtf.png")));
}

void TextScan::watch()
{
    int percent = 0;
    if (engine_->MirvakOCR_GetProgress(percent) == MIRVAK_OCR_OK)
        job_->reach(percent / 100.0);
    if (job_->isStopped())
        engine_->MirvakOCR_Stop();
}

void TextScan::tellNothing()
{
    desk_.showNotice(tr("No text was recognised. The picture itself is saved."));
}

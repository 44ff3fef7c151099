#include "RecordControl.h"

#include "CaptureDesk.h"
#include "Dialogs.h"
#include "FileNaming.h"
#include "Job.h"
#include "Settings.h"
#include "VideoRecord.h"
#include "mirvakcamera.h"
#include "mirvakrecord.h"

#include <QFileInfo>
#include <QPixmap>
#include <QPushButton>

#include <algorithm>
#include <chrono>

namespace {

constexpr int format = 2;
constexpr int mostPixels = 1600 * 1200;
constexpr int framesPerSecond = 30;
constexpr int rgbFrames = 2;

constexpr std::chrono::milliseconds watchInterval(250);
constexpr int ticksToTell = 2 * 4; // a slow camera in the dark is not silent yet
constexpr int ticksToEnd = 10 * 4; // so long a camera may be away

int pixelsOf(const QSize& size)
{
    return size.width() * size.height();
}

QSize sizeIn(const QString& text)
{
    const QString present = text.isEmpty() ? QStringLiteral("1600 * 1200") : text;
    const QChar separator = QLatin1Char('*');
    return {present.section(separator, 0, 0).trimmed().toInt(),
            present.section(separator, 1, 1).trimmed().toInt()};
}

} // namespace

RecordControl::RecordControl(CaptureDesk& desk, MirvakCamera& camera, QWidget& window, QObject* parent)
    : QObject(parent), desk_(desk), camera_(camera), window_(window)
{
    watch_.setInterval(watchInterval);
    connect(&watch_, &QTimer::timeout, this, &RecordControl::watch);
    copyWatch_.setInterval(watchInterval);
    connect(&copyWatch_, &QTimer::timeout, this, &RecordControl::watchCopying);
}

RecordControl::~RecordControl()
{
    finish();
}

void RecordControl::start(const Source& source)
{
    if (recording_) {
        recordWindow_->Resume();
        return;
    }
    if (!desk_.mayCapture())
        return;
    ConfigSettings store;
    const QString folder = FileNaming(store).targetDirectory();
    if (folder.isEmpty())
        return desk_.showNotice(tr("The video could not be recorded. Please check the folder %1.")
                                    .arg(settings::savePath(store)));
    const QSize size = sizeOf(source);
    if (pixelsOf(size) > mostPixels)
        refuseSize(source.device);
    else
        open(folder, source.rotation % 2 == 1 ? size.transposed() : size);
}

QSize RecordControl::sizeAt(void* device, int resolutionIndex) const
{
    return {camera_.MirvakDevice_GetResolutionWidth(device, format, resolutionIndex),
            camera_.MirvakDevice_GetResolutionHeight(device, format, resolutionIndex)};
}

QSize RecordControl::sizeOf(const Source& source) const
{
    const QSize size = sizeAt(source.device, source.resolutionIndex);
    return size.isEmpty() ? sizeIn(source.resolutionText) : size;
}

/// The largest that can be filmed; -1 when there is none.
int RecordControl::fittingResolution(void* device) const
{
    int best = -1, pixels = 0;
    for (int i = 0; i < camera_.MirvakDevice_GetResolutionSize(device, format); ++i) {
        const int offered = pixelsOf(sizeAt(device, i));
        if (offered <= mostPixels && offered > pixels) {
            best = i;
            pixels = offered;
        }
    }
    return best;
}

void RecordControl::refuseSize(void* device)
{
    QMessageBox box(QMessageBox::Information,
                    tr("Tips"),
                    tr("Recording stopped, please adjust the resolution to 1600 * 1200"),
                    QMessageBox::Ok,
                    &window_);
    box.setObjectName(QStringLiteral("FilmSize"));
    box.setInformativeText(
        tr("The picture of this camera is too large for a film: choose at most 1600 x 1200."));
    const int fitting = fittingResolution(device);
    if (fitting >= 0) {
        const QSize size = sizeAt(device, fitting);
        QPushButton* film = box.addButton(QMessageBox::Apply);
        film->setObjectName(QStringLiteral("buttonFilm"));
        film->setText(tr("Record at %1 x %2").arg(size.width()).arg(size.height()));
    }
    if (Dialogs::instance().ask(box) == QMessageBox::Apply)
        Q_EMIT filmSizeWanted(fitting);
}

void RecordControl::open(const QString& folder, QSize size)
{
    makeParts();
    path_ = FileNaming::stampedPath(folder, QStringLiteral("mp4"));
    const int taken = MIRVAK_RECORD_EXISTS;
    const int result = FileNaming::saveNew(path_, taken, [&](const QString& path) {
        return recorder_->MirvakRecord_Start(
            path.toUtf8().constData(), size.width(), size.height(), framesPerSecond, rgbFrames, 0);
    });
    if (result != MIRVAK_RECORD_OK) {
        desk_.showNotice(tr("The video could not be recorded."));
        return;
    }
    silentTicks_ = 0;
    recording_ = true;
    watch_.start();
    recordWindow_->StartRecord(path_);
    Q_EMIT filming(0);
}

void RecordControl::makeParts()
{
    if (recorder_)
        return;
    recorder_ = std::make_unique<MirvakRecord>();
    recordWindow_ = new VideoRecord(&window_);
    recordWindow_->setFilmTime([this] { return filmSeconds(); });
    connect(recordWindow_, &VideoRecord::recordstoped, this, &RecordControl::stop);
    connect(recordWindow_, &VideoRecord::videoRecordGenerated, this, &RecordControl::list);
    connect(recordWindow_, &VideoRecord::leftRunning, this, [this] {
        desk_.showNotice(tr("The recording goes on. The video button shows its window again."));
    });
}

// Capture thread. The recorder takes frames at any time, also while it is being stopped.
void RecordControl::record(void* image)
{
    if (!recording_)
        return;
    int width = camera_.MirvakImage_GetWidth(image), height = camera_.MirvakImage_GetHeight(image);
    int byteCount = width * height * 3;
    pixels_.resize(static_cast<size_t>(std::max(byteCount, 0)));
    int channels = 0, bits = 0, stride = 0, order = 0;
    if (camera_.MirvakImage_GetImageData(
            image, pixels_.data(), width, height, channels, bits, stride, order, byteCount) != MIRVAK_OK)
        return;
    if (recorder_->MirvakRecord_WriteScaled(pixels_.data(), byteCount, width, height) == MIRVAK_RECORD_OK)
        ++frames_;
}

void RecordControl::watch()
{
    int milliseconds = 0;
    if (recorder_->MirvakRecord_GetLength(milliseconds) != MIRVAK_RECORD_OK)
        return tellEnded(stopRecorder());
    Q_EMIT filming(filmSeconds());
    watchCamera();
}

// A pulled cable is soon put back: the film shows its last picture meanwhile and then goes on.
void RecordControl::watchCamera()
{
    const bool isSilent = frames_ == framesSeen_;
    framesSeen_ = frames_;
    if (!isSilent && silentTicks_ >= ticksToTell)
        recordWindow_->ShowNote(QString());
    silentTicks_ = isSilent ? silentTicks_ + 1 : 0;
    if (silentTicks_ == ticksToTell)
        tellSilence();
    if (silentTicks_ >= ticksToEnd)
        tellEnded(stopRecorder());
}

void RecordControl::tellSilence()
{
    const QString text = tr("The camera delivers no picture; the video shows the last one.");
    recordWindow_->ShowNote(text);
    desk_.showNotice(text);
}

int RecordControl::filmSeconds() const
{
    int milliseconds = 0;
    recorder_->MirvakRecord_GetLength(milliseconds);
    return qRound(milliseconds / 1000.0); // what is being filmed counts
}

int RecordControl::stopRecorder()
{
    watch_.stop();
    recording_ = false;
    Q_EMIT ended();
    const int result = recorder_->MirvakRecord_Stop();
    showCopying();
    return result;
}

// A long film is rewritten for a while, and plays meanwhile.
void RecordControl::showCopying()
{
    int percent = 0;
    if (copy_ || recorder_->MirvakRecord_GetCopying(percent) != MIRVAK_RECORD_OK)
        return;
    copy_ = std::make_shared<Job>();
    copyWatch_.start();
    desk_.showJob(tr("The video is saved. It is being put into a form that plays everywhere at once."),
                  copy_);
}

void RecordControl::watchCopying()
{
    int percent = 0;
    if (recorder_->MirvakRecord_GetCopying(percent) != MIRVAK_RECORD_OK) {
        copyWatch_.stop();
        if (copy_->isStopped())
            desk_.showNotice(tr("Cancelled. The video is saved and plays as it is."));
        copy_.reset();
        return;
    }
    copy_->reach(percent / 100.0);
    if (copy_->isStopped())
        recorder_->MirvakRecord_StopCopying();
}

void RecordControl::stop()
{
    const int result = stopRecorder();
    if (result != MIRVAK_RECORD_OK)
        tellEnded(result);
}

void RecordControl::finish()
{
    if (recording_)
        stopRecorder();
}

void RecordControl::tellEnded(int result)
{
    const bool isFilm = QFileInfo::exists(path_);
    const QString why = isFilm ? whyEnded(result) : whyNothing(result);
    recordWindow_->ShowEnded(filmSeconds(), why);
    desk_.showNotice(why);
    list(path_);
}

// With a film that is shorter than was wanted. OK: the camera stayed away.
QString RecordControl::whyEnded(int result)
{
    switch (result) {
    case MIRVAK_RECORD_OK:
        return tr("The camera delivers no picture. The recording has ended; the video until then is saved.");
    case MIRVAK_RECORD_IO_ERROR:
        return tr(
            "The disk is full or cannot be written. The recording has ended; the video until then is saved.");
    default:
        return tr("The video encoder failed. The recording has ended; the video until then is saved.");
    }
}

QString RecordControl::whyNothing(int result)
{
    return result == MIRVAK_RECORD_NO_FRAME ? tr("Nothing was recorded: the camera delivered no picture.")
                                            : tr("The video could not be recorded.");
}

void RecordControl::list(const QString& path)
{
    if (QFileInfo::exists(path))
        desk_.addDocument(path, QPixmap(QStringLiteral(":/images/common/images/common/ThumbnailVideo.png")));
}

#include "RecordControl.h"

#include "CaptureDesk.h"
#include "Dialogs.h"
#include "FileNaming.h"
#include "Settings.h"
#include "VideoRecord.h"
#include "mirvakcamera.h"
#include "mirvakrecord.h"

#include <QFileInfo>
#include <QPixmap>

namespace {

constexpr int format = 2;
constexpr int mostPixels = 1600 * 1200;
constexpr int framesPerSecond = 30;
constexpr int rgbFrames = 2;

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
}

RecordControl::~RecordControl()
{
    finish();
}

void RecordControl::start(const Source& source)
{
    if (!desk_.mayCapture())
        return;
    if (recording_) {
        recordWindow_->Resume(static_cast<int>(running_.elapsed() / 1000));
        return;
    }
    ConfigSettings store;
    const QString folder = FileNaming(store).targetDirectory();
    if (folder.isEmpty())
        return;
    const QSize size = sizeOf(source);
    if (size.width() * size.height() > mostPixels) {
        Dialogs::instance().information(&window_,
                                        tr("Tips"),
                                        tr("Recording stopped, please adjust the resolution to 1600 * 1200"),
                                        QMessageBox::Ok);
        return;
    }
    open(FileNaming::stampedPath(folder, QStringLiteral("mp4")),
         source.rotation % 2 == 1 ? size.transposed() : size);
}

QSize RecordControl::sizeOf(const Source& source) const
{
    const QSize size(camera_.MirvakDevice_GetResolutionWidth(source.device, format, source.resolutionIndex),
                     camera_.MirvakDevice_GetResolutionHeight(source.device, format, source.resolutionIndex));
    return size.isEmpty() ? sizeIn(source.resolutionText) : size;
}

void RecordControl::open(const QString& path, QSize size)
{
    makeParts();
    if (recorder_->MirvakRecord_Start(
            path.toUtf8().constData(), size.width(), size.height(), framesPerSecond, rgbFrames, 0) !=
        MIRVAK_RECORD_OK) {
        desk_.showNotice(tr("The video could not be recorded."));
        return;
    }
    size_ = size;
    failed_ = false;
    running_.start();
    recording_ = true;
    recordWindow_->StartRecord(path);
}

void RecordControl::makeParts()
{
    if (recorder_)
        return;
    recorder_ = std::make_unique<MirvakRecord>();
    recordWindow_ = new VideoRecord(&window_);
    connect(recordWindow_, &VideoRecord::recordstoped, this, &RecordControl::stop);
    connect(recordWindow_, &VideoRecord::videoRecordGenerated, this, &RecordControl::list);
    connect(recordWindow_, &VideoRecord::leftRunning, this, [this] {
        desk_.showNotice(tr("The recording goes on. The video button shows its window again."));
    });
}

// Capture thread. The recorder takes frames at any time, also while it is being stopped.
void RecordControl::record(void* image)
{
    if (!recording_ || failed_)
        return;
    const QSize size(camera_.MirvakImage_GetWidth(image), camera_.MirvakImage_GetHeight(image));
    if (size != size_)
        return;
    int byteCount = size.width() * size.height() * 3;
    pixels_.resize(static_cast<size_t>(byteCount));
    int width = 0, height = 0, channels = 0, bits = 0, stride = 0, order = 0;
    if (camera_.MirvakImage_GetImageData(
            image, pixels_.data(), width, height, channels, bits, stride, order, byteCount) != MIRVAK_OK)
        return;
    if (recorder_->MirvakRecord_Write(pixels_.data(), byteCount) != MIRVAK_RECORD_IO_ERROR)
        return;
    failed_ = true;
    QMetaObject::invokeMethod(this, &RecordControl::tellEnded, Qt::QueuedConnection);
}

void RecordControl::stop()
{
    recording_ = false;
    recorder_->MirvakRecord_Stop();
}

void RecordControl::finish()
{
    if (recording_)
        stop();
}

void RecordControl::list(const QString& path)
{
    if (QFileInfo::exists(path))
        desk_.addDocument(path, QPixmap(QStringLiteral(":/images/common/images/common/ThumbnailVideo.png")));
    else
        desk_.showNotice(tr("Nothing was recorded: the camera delivered no picture."));
}

void RecordControl::tellEnded()
{
    desk_.showNotice(tr("The recording has ended early; what was recorded until then is saved."));
}

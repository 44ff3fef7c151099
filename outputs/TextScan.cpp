#include "TextScan.h"

#include "CaptureDesk.h"
#include "FileNaming.h"
#include "Settings.h"
#include "mirvakocr.h"

#include <QApplication>
#include <QPixmap>

namespace {

constexpr std::chrono::seconds frameTimeout(10);
constexpr std::chrono::seconds reminderInterval(4);

} // namespace

TextScan::TextScan(CaptureDesk& desk, QString modelDirectory, QObject* parent)
    : QObject(parent), desk_(desk), models_(std::move(modelDirectory))
{
    reminder_.setInterval(reminderInterval);
    connect(&reminder_, &QTimer::timeout, this, &TextScan::tellWorking);
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
    if (isRunning() || !desk_.mayCapture())
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
    const bool started = workers_.start([this, picture] {
        const Result result = recognise(*engine_, picture);
        QMetaObject::invokeMethod(
            this, [this, result] { finish(result); }, Qt::QueuedConnection);
    });
    if (!started) {
        engine_.reset();
        return false;
    }
    QApplication::setOverrideCursor(Qt::BusyCursor);
    tellWorking();
    reminder_.start();
    return true;
}

// Worker thread.
TextScan::Result TextScan::recognise(MirvakOCR& engine, const QString& picture)
{
    Result result;
    result.isRead = engine.MirvakOCR_Discern(picture.toUtf8().constData()) == MIRVAK_OCR_OK;
    if (result.isRead) {
        ConfigSettings store;
        const QString folder = FileNaming(store).targetDirectory();
        if (!folder.isEmpty()) {
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
    engine_.reset();
    reminder_.stop();
    QApplication::restoreOverrideCursor();
    if (!result.isRead)
        tellNothing();
    else if (!result.isWritten)
        desk_.showNotice(tr("The text could not be written. The picture itself is saved."));
    else
        desk_.showNotice(QString());
    if (!result.document.isEmpty())
        desk_.addDocument(result.document,
                          QPixmap(QStringLiteral(":/images/common/images/common/ThumbnailRtf.png")));
}

void TextScan::tellWorking()
{
    desk_.showNotice(tr("The text is being recognised."));
}

void TextScan::tellNothing()
{
    desk_.showNotice(tr("No text was recognised. The picture itself is saved."));
}

#include "CaptureProcessor.h"

#include "FileNaming.h"
#include "FrameHandle.h"
#include "SavePicture.h"
#include "Settings.h"
#include "mirvakcamera.h"

#include <QDateTime>
#include <QImage>

#include <cstdio>

namespace {

constexpr int deskewMargin = 15; // pixels inside each edge, so that no sliver of the desk stays
constexpr int jpegQuality = 95;
constexpr int saveMode = 3;
constexpr int watermarkFontSize = 20;
constexpr int watermarkColour = 0xff0000;

QString watermarkText(ConfigSettings& store)
{
    if (settings::watermarkTime.read(store))
        return QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss"));
    return settings::watermarkText.read(store);
}

/// Positions 1 to 4: top left, bottom left, top right, bottom right. The text's width is taken as 20 pixels a
/// character, whatever the characters.
MirvakPointF watermarkAnchor(int position, int width, int height, int characters)
{
    const bool right = position >= 3;
    const bool bottom = position == 2 || position == 4;
    return {right ? static_cast<float>(width - 120 - 20 * characters) : 100.0F,
            bottom ? static_cast<float>(height - 120) : 100.0F};
}

} // namespace

QString CaptureProcessor::imageSave(void* image, int cropMode, int colourMode, const QRect& selection)
{
    const std::lock_guard lock(saveMutex_);
    if (!image)
        return QString();
    const QString path = getImagePath();
    if (path.isEmpty())
        return QString();
    const FrameHandle work = ownImage(camera_, camera_.MirvakImage_Clone(image));
    if (!work) {
        std::fputs("capture: no memory for a copy of the frame\n", stderr);
        return QString();
    }
    crop(work.get(), cropMode, selection);
    return finish(work.get(), colourMode, path);
}

SavedPages CaptureProcessor::savePages(void* image, int cropMode, int colourMode, const QRect& selection)
{
    std::vector<FrameHandle> pages;
    if (image && cropMode == cropping::second)
        pages = pagesOf(image);
    SavedPages saved;
    const auto note = [&saved](const QString& path) {
        if (path.isEmpty())
            ++saved.failed;
        else
            saved.paths << path;
    };
    if (pages.empty()) // without a page to find, automatic cropping makes the picture level and cuts nothing
        note(imageSave(
            image, cropMode == cropping::second ? cropping::deskew : cropMode, colourMode, selection));
    const std::lock_guard lock(saveMutex_);
    for (const FrameHandle& page : pages) {
        const QString path = getImagePath();
        note(path.isEmpty() ? path : finish(page.get(), colourMode, path));
    }
    return saved;
}

std::vector<FrameHandle> CaptureProcessor::pagesOf(void* image) const
{
    std::vector<void*> found;
    camera_.MirvakImage_DeskewAll(image, deskewMargin, found);
    std::vector<FrameHandle> pages;
    pages.reserve(found.size());
    for (void* page : found)
        pages.push_back(ownImage(camera_, page));
    return pages;
}

/// Colours, watermark, and the file under that name or, when something has it meanwhile, the next.
QString CaptureProcessor::finish(void* work, int colourMode, QString path) const
{
    applyColour(work, colourMode);
    stampWatermark(work);
    const int result =
        FileNaming::saveNew(path, int(MIRVAK_EXISTS), [&](const QString& name) { return save(name, work); });
    if (result != MIRVAK_OK) {
        std::fprintf(
            stderr, "capture: %s was not saved (MirvakImage_Save: %d)\n", qUtf8Printable(path), result);
        return QString();
    }
    return path;
}

int CaptureProcessor::save(const QString& path, void* work) const
{
    const QByteArray name = path.toUtf8();
    return readers_ == FilesFor::ownerAlone
               ? camera_.MirvakImage_SavePrivate(name.constData(), work, jpegQuality)
               : camera_.MirvakImage_Save(name.constData(), work, jpegQuality, saveMode);
}

void CaptureProcessor::crop(void* work, int cropMode, const QRect& selection) const
{
    if (cropMode == cropping::deskew)
        camera_.MirvakImage_Deskew(work, deskewMargin);
    else if (cropMode == cropping::selection && !selection.isEmpty())
        camera_.MirvakImage_Crop(
            work, selection.left(), selection.top(), selection.width(), selection.height());
}

void CaptureProcessor::applyColour(void* work, int colourMode) const
{
    switch (colourMode) {
    case 1:
        camera_.MirvakImage_DelBGColor(work);
        break;
    case 2:
        camera_.MirvakImage_Threshold(work);
        break;
    case 3:
        camera_.MirvakImage_EnhanceColor(work);
        break;
    case 4:
        camera_.MirvakImage_WhitePaperSeal(work, 0);
        break;
    case 5:
        camera_.MirvakImage_WhitePaperSeal(work, 1);
        break;
    case 6:
    case 7:
        camera_.MirvakImage_DocumentProcess(work);
        break;
    default:
        break;
    }
}

void CaptureProcessor::stampWatermark(void* work) const
{
    ConfigSettings store;
    const int position = settings::watermarkPos.read(store);
    if (position < 1 || position > 4)
        return;
    const QString text = watermarkText(store);
    if (text.isEmpty())
        return;
    const MirvakPointF anchor = watermarkAnchor(position,
                                                camera_.MirvakImage_GetWidth(work),
                                                camera_.MirvakImage_GetHeight(work),
                                                static_cast<int>(text.length()));
    camera_.MirvakImage_Watermark(
        work, text.toUtf8().constData(), anchor, watermarkFontSize, watermarkColour, 0.0F);
}

QString CaptureProcessor::imageSave(const QImage& image, int mode)
{
    const std::lock_guard lock(saveMutex_);
    if (image.isNull())
        return QString();
    QString path = getImagePath();
    const bool written = mode == 0 || mode == 1 || mode == 3; // the other modes only go through the motions
    if (path.isEmpty() || !written)
        return QString();
    const QImage cut = settings::deskew.read() == 1
                           ? image.copy(deskewMargin, deskewMargin, image.width() - 16, image.height() - 16)
                           : image;
    return savePicture(cut, path);
}

QString CaptureProcessor::getImagePath() const
{
    ConfigSettings store;
    return FileNaming(store).getImagePath();
}

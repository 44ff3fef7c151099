#pragma once

#include "FrameHandle.h"

#include <QRect>
#include <QStringList>

#include <mutex>
#include <vector>

class MirvakCamera;
class QImage;

/// Where a capture is cut.
namespace cropping {
constexpr int none = 0;
constexpr int deskew = 1;    ///< the page is found, straightened and cut out
constexpr int second = 2;    ///< all pages side by side, one picture each; where one is wanted, uncut
constexpr int selection = 3; ///< the rectangle drawn in the preview
} // namespace cropping

/// What became of one shot.
struct SavedPages
{
    QStringList paths; ///< full paths, in the order in which people read
    int failed = 0;    ///< pages that were not saved (one line each on standard error)
};

/// Turns a frame into a file: crop, colour, watermark, save under the next free name. Thread-safe: one
/// capture at a time, so two captures never take the same name.
class CaptureProcessor
{
public:
    enum class FilesFor { everybody, ownerAlone };
    explicit CaptureProcessor(MirvakCamera& camera, FilesFor readers = FilesFor::everybody)
        : camera_(camera), readers_(readers)
    {
    }

    /// Saves a processed copy of `image`, which stays the caller's and unchanged.
    /// @param cropMode one of cropping::
    /// @param colourMode 0 none, 1 background to white, 2 black and white, 3 colours enhanced, 4 red seal,
    ///        5 blue seal, 6 and 7 document
    /// @param selection pixels of `image`, for cropping::selection; null cuts nothing
    /// @return full path of the new file; empty when nothing was written (one line on standard error)
    QString imageSave(void* image, int cropMode, int colourMode, const QRect& selection = QRect());

    /// The same, but with cropping::second every page that lies there, straightened and cut out, becomes a
    /// file of its own. Where no page is found the picture is one, level and uncut. What cannot be saved is
    /// missing and counted, the others are there.
    SavedPages savePages(void* image, int cropMode, int colourMode, const QRect& selection = QRect());

    /// Saves a picture that is one already. Only modes 0, 1 and 3 write; with automatic cropping chosen in
    /// the settings a margin of 15 pixels is cut off.
    QString imageSave(const QImage& image, int mode);

    /// Path of the next file, as FileNaming::getImagePath.
    QString getImagePath() const;

private:
    std::vector<FrameHandle> pagesOf(void* image) const;
    QString finish(void* work, int colourMode, QString path) const;
    void crop(void* work, int cropMode, const QRect& selection) const;
    void applyColour(void* work, int colourMode) const;
    void stampWatermark(void* work) const;
    int save(const QString& path, void* work) const;

    MirvakCamera& camera_;
    const FilesFor readers_; ///< of the files made of image handles
    std::mutex saveMutex_;
};

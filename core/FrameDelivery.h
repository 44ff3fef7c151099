#pragma once

#include "ImageChannel.h"
#include "PageMark.h"
#include "mirvakcamera.h"

#include <QImage>

#include <atomic>
#include <functional>

/// What happens to every frame of the main camera: turn, show, hand to a waiting capture, inspect. Runs on
/// the capture thread; the setters may be called from any thread.
class FrameDelivery
{
public:
    /// Receives each frame as 24-bit RGB; a copy of the picture keeps its pixels.
    using Show = std::function<void(const QImage&)>;
    /// Looks at a frame before it is given back to the library, every n-th time.
    using Inspect = std::function<void(void* image)>;

    FrameDelivery(MirvakCamera& camera, Show show) : camera_(camera), channel_(camera), show_(std::move(show))
    {
    }

    /// All are set before the first frame arrives.
    void onSecondFrame(std::function<void()> call) { secondFrame_ = std::move(call); }
    void setPaperSizeCheck(Inspect check) { paperSizeCheck_ = std::move(check); }
    void setPageCheck(Inspect check) { pageCheck_ = std::move(check); }
    /// Hears what is known of the page in a frame, just before that is shown. Without automatic cropping no
    /// page is looked for.
    void setMark(std::function<void(const PageMark&)> mark) { mark_ = std::move(mark); }
    /// Gets every frame, turned as it is shown.
    void setRecorder(Inspect record) { recorder_ = std::move(record); }

    /// Capture thread. `image` is turned in place, and last the outlines are drawn into it; the shown picture
    /// shares its pixels. A null image is ignored.
    void onFrame(void* image);

    /// Quarter turns clockwise, 0 to 3; others count as 0.
    void setRotation(int quarterTurns)
    {
        rotation_ = quarterTurns > 3 || quarterTurns < 0 ? 0 : quarterTurns;
    }
    int rotation() const { return rotation_; }

    /// One of cropping::; with cropping::deskew the page's outline is drawn into the shown picture, with
    /// cropping::second those of all pages.
    void setCroppingMode(int mode) { croppingMode_ = mode; }
    int croppingMode() const { return croppingMode_; }

    unsigned frameCount() const { return frameCount_; } ///< delivered since the start

    ImageChannel& channel() { return channel_; }

private:
    void rotate(void* image) const;
    PageMark findPages(void* image);
    void drawPages(void* image) const;

    MirvakCamera& camera_;
    ImageChannel channel_;
    Show show_;
    std::function<void()> secondFrame_;
    Inspect paperSizeCheck_;
    Inspect pageCheck_;
    Inspect recorder_;
    std::function<void(const PageMark&)> mark_;
    std::vector<MirvakOutline> pages_; ///< shown in the newest frame; capture thread
    unsigned pagesAge_ = 0;            ///< frames since a page was last searched for; capture thread
    std::atomic<int> rotation_{0};
    std::atomic<int> croppingMode_{0};
    std::atomic<unsigned> frameCount_{0};
};

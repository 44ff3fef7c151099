#pragma once

#include "CaptureDesk.h"
#include "Job.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <QList>
#include <QStringList>

#include <functional>

/// A main window for features under test: answers as it is told and keeps what it was asked for.
class FakeDesk : public CaptureDesk
{
public:
    bool mayCapture() override { return allowed && !mergePending; }
    bool mayCompose() override { return allowed; }
    FrameHandle takeFrame(std::chrono::seconds) override
    {
        ++framesTaken;
        if (whileTaking)
            whileTaking();
        return ownImage(camera,
                        frameComes ? makeImageHandle(frameSize.width(), frameSize.height()) : nullptr);
    }
    QStringList savePages(void* image, int colourMode) override
    {
        QStringList pages;
        for (int i = 0; i < pagesInShot; ++i)
            pages << saveCropped(image, 0, colourMode);
        pages.removeAll({});
        return pages;
    }
    QString saveFrame(void* image, int colourMode) override { return saveCropped(image, 0, colourMode); }
    QString saveCropped(void* image, int cropMode, int colourMode) override
    {
        if (whileSaving)
            whileSaving(image);
        cropModes << cropMode;
        colourModes << colourMode;
        return savesAs.isEmpty() ? QString() : savesAs.takeFirst();
    }
    int croppingMode() const override { return cropping; }
    bool showsSecondCamera() const override { return secondShown; }
    FrameHandle takeSecondFrame(std::chrono::seconds) override
    {
        return ownImage(camera,
                        secondComes ? makeImageHandle(secondSize.width(), secondSize.height(), {250, 0, 0})
                                    : nullptr);
    }
    void tell(const QString& title, const QString& text) override { told << title << text; }
    QString freeImagePath() const override { return QStringLiteral("/free/path.jpg"); }
    void addThumbnail(const QString& path) override { thumbnails << path; }
    void addDocument(const QString& path, const QPixmap& icon) override
    {
        documents << path;
        documentIcons << icon;
    }
    void showNotice(const QString& text) override { notices << text; }
    void showJob(const QString& text, const std::shared_ptr<Job>& shown) override
    {
        jobs << text;
        job = shown;
        if (whenShown)
            whenShown(*shown);
    }
    /// Of the job that is shown; 1 when there is none.
    double jobProgress() const
    {
        const std::shared_ptr<Job> shown = job.lock();
        return shown ? shown->progress() : 1;
    }
    void cancelJob() const
    {
        if (const std::shared_ptr<Job> shown = job.lock())
            shown->stop();
    }
    void setMergePending(bool pending) override { mergePending = pending; }
    void enableTools(bool enable) override { toolsEnabled = enable; }

    MirvakCamera camera;
    bool allowed = true;
    bool frameComes = true;
    int cropping = 0;
    bool secondShown = false;
    bool secondComes = true;
    QStringList told;
    std::function<void()> whileTaking;
    std::function<void(void* image)> whileSaving;
    QSize frameSize{8, 8};
    QSize secondSize{12, 9};
    QStringList savesAs; ///< one a capture; then nothing can be saved
    int pagesInShot = 1;
    int framesTaken = 0;
    QList<int> cropModes;
    QList<int> colourModes;
    QStringList thumbnails;
    QStringList documents;
    QList<QPixmap> documentIcons;
    QStringList notices;
    QStringList jobs;
    std::weak_ptr<Job> job;                  ///< the last one that was shown
    std::function<void(Job& job)> whenShown; ///< what the user does with it
    bool mergePending = false;
    bool toolsEnabled = true;
};

#pragma once

#include "Workers.h"

#include <QImage>
#include <QObject>

#include <condition_variable>
#include <deque>
#include <mutex>

/// Makes small pictures of picture files on a thread of its own, one after the other in the order they were
/// asked for. A JPEG is decoded at no more than the size it takes. GUI thread only.
class ThumbnailLoader : public QObject
{
    Q_OBJECT

public:
    explicit ThumbnailLoader(QObject* parent = nullptr) : QObject(parent) {}
    /// Waits for the picture that is being made and drops the rest.
    ~ThumbnailLoader() override;

    /// What is known without decoding the picture: its size in px, upright; empty when the file is no
    /// picture.
    static QSize sizeOf(const QString& path);
    /// Asks for the picture of the file, upright and fitted into `room` px. Asked for again before it is
    /// begun it is made once.
    void load(const QString& path, const QSize& room);
    /// Forgets the file, unless its picture is being made.
    void drop(const QString& path);

Q_SIGNALS:
    /// `picture` is null when the file turned out to be unreadable.
    void loaded(const QString& path, const QImage& picture);

private:
    struct Job
    {
        QString path;
        QSize room;
    };
    void work();
    std::deque<Job>::iterator find(const QString& path);

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Job> waiting_; // guarded by mutex_
    bool isEnding_ = false;   // guarded by mutex_
    bool isWorking_ = false;  // from the first job on
    Workers worker_;          // last: it uses the others
};

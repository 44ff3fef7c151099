#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSize>
#include <QTimer>

#include <functional>

class QImage;
class ThumbnailLoader;

/// Follows the files of a strip: reads their pictures, again whenever a file has changed, and tells when one
/// is gone. A file that cannot be read for a time, because another program writes it in place, is tried
/// until it can. GUI thread only.
class ListedFiles : public QObject
{
    Q_OBJECT

public:
    /// `room`: px of the display that a picture is fitted into.
    explicit ListedFiles(std::function<QSize()> room, QObject* parent = nullptr);

    /// A file that has a picture in the strip already.
    void follow(const QString& path);
    /// A file whose picture is to be read; ends with refused() when it never had one.
    void followPicture(const QString& path);
    void forget(const QString& path);
    /// Looks whether the file is still there, and at its picture. Files that are not followed are ignored.
    void check(const QString& path);

Q_SIGNALS:
    void pictureRead(const QString& path, const QImage& picture);
    void refused(const QString& path); ///< no readable picture; no longer followed
    void gone(const QString& path);    ///< no longer followed

private:
    struct Stamp
    {
        qint64 bytes = 0;
        QDateTime modified;
        bool operator==(const Stamp& other) const
        {
            return bytes == other.bytes && modified == other.modified;
        }
    };
    struct File
    {
        Stamp read;             ///< of what was last looked at
        bool isPicture = false; ///< or was one, or should be
        bool isUnread = false;  ///< at the last look
        bool maybeNone = false; ///< no picture has been seen, and it has not changed since it was listed
    };
    static Stamp stampOf(const QString& path);
    void add(const QString& path, bool maybeNone);
    void read(const QString& path);
    void onLoaded(const QString& path, const QImage& picture);
    void retry();

    std::function<QSize()> room_;
    QFileSystemWatcher watcher_;
    ThumbnailLoader* loader_;
    QHash<QString, File> files_;
    QTimer retryTimer_;
};

#pragma once

#include <QString>

class ConfigSettings;

/// Names the files that captures become, by the rules of the settings. Reads the settings at every call.
/// Reentrant with one ConfigSettings per thread.
class FileNaming
{
public:
    /// `settings` is borrowed for the life of this object.
    explicit FileNaming(ConfigSettings& settings) : settings_(settings) {}

    /// Where new files go: the save path, with today's date below it when so chosen. It may not be there.
    QString directory() const;
    /// The same, made when missing, one level deep; empty when that fails (one line on standard error).
    QString targetDirectory() const;

    /// Full path of the next file, which nothing has yet; empty when there is no folder for it.
    QString getImagePath() const;

    /// Where a document, named by the present second or the next free one, goes:
    /// `folder`/yyyyMMddhhmmss.`extension`.
    static QString stampedPath(const QString& folder, const QString& extension);

    /// The next path after `path` that nothing has: a name that is a time, to the second or millisecond, goes
    /// on by one of them, any other by the number at its end.
    static QString nextPath(const QString& path);

    /// Saves a new file although its name may be taken between its choice and the saving: calls `save(path)`,
    /// with `path` moved on, until the answer is not `taken`, 100 times at most. @return the last answer
    template <class Save, class Result> static Result saveNew(QString& path, Result taken, Save save)
    {
        Result result = save(path);
        for (int tries = 1; result == taken && tries < 100; ++tries) {
            path = nextPath(path);
            result = save(path);
        }
        return result;
    }

    /// One more than the highest serial number that `prefix` has in `directory` among files whose names
    /// contain `extension`; 0 without any. A field that is no number counts as 0.
    static qint64 getNameIndex(const QString& directory, const QString& prefix, const QString& extension);

    /// "jpg", "png" or "bmp".
    QString getNameFormat() const;

    /// `prefix` without the characters that no file name may carry and without a dot in front, which would
    /// hide the file; "IMAGE" when nothing else is left of it.
    static QString safePrefix(const QString& prefix);

private:
    static QString freePath(QString path);

    ConfigSettings& settings_;
};

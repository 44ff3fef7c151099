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

    /// The folder that takes new files: the save path, with today's date below it when so chosen. It is made
    /// when missing, one level deep; empty when that fails (one line on standard error).
    QString targetDirectory() const;

    /// Full path of the next file; empty when there is no folder for it.
    QString getImagePath() const;

    /// Where a document, named by the present second, goes: `folder`/yyyyMMddhhmmss.`extension`.
    static QString stampedPath(const QString& folder, const QString& extension);

    /// One more than the highest serial number that `prefix` has in `directory` among files whose names
    /// contain `extension`; 0 without any. A field that is no number counts as 0.
    static int getNameIndex(const QString& directory, const QString& prefix, const QString& extension);

    /// "jpg", "png" or "bmp".
    QString getNameFormat() const;

    /// `prefix` without the characters that no file name may carry; "IMAGE" when nothing else is left of it.
    static QString safePrefix(const QString& prefix);

private:
    ConfigSettings& settings_;
};

#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

/// Writes PNGs below one folder and keeps their list for the resource collection.
/// Throws std::runtime_error with the path when a file cannot be written.
class ImageStore
{
public:
    explicit ImageStore(QString folder);

    /// Stores ":/images/<group>/images/<group>/<name>.png", or its "@2x", "@3x" sibling for a larger scale.
    void add(const QString& group, const QString& name, int scale, const QImage& image);

    /// Writes the resource collection of everything added; its paths start at the folder of the store.
    void writeCollection(const QString& path) const;

private:
    QString folder_;
    QStringList files_; // relative to folder_
};

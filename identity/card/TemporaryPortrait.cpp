#include "TemporaryPortrait.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <unistd.h>

TemporaryPortrait::~TemporaryPortrait()
{
    if (!path_.isEmpty())
        QFile::remove(path_);
}

QPixmap TemporaryPortrait::load(const QString& path)
{
    // The folder is open to everybody: what another user has put there is no portrait.
    const QFileInfo file(path);
    if (!file.isFile() || file.isSymLink() || file.ownerId() != ::getuid())
        return {};
    path_ = path;
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    // Not by QPixmap's own loading: that takes a file of the same second and size for the one that it knows,
    // and shows the portrait of the person before.
    return QPixmap::fromImage(QImage(path));
}

#pragma once

#include <QByteArray>

class QImage;
class QString;

/// Writes a picture as a new file, in default quality and with the resolution of all the program's pictures
/// (8464 dots per metre). The file appears under its name when it is complete. Reentrant.
/// @param path what is wished for; the next free one is taken when something has that name
/// @param format as QImageWriter knows it; by default the path's extension
/// @return the path that was taken; empty when nothing was written (one line on standard error)
QString savePicture(const QImage& picture, QString path, QByteArray format = {});

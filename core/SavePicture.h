#pragma once

class QImage;
class QString;

/// Writes a picture in the format of the path's extension and default quality, with the resolution of all the
/// program's pictures (8464 dots per metre). The file appears under its name when it is complete. Reentrant.
/// @return false when nothing was written (one line on standard error)
bool savePicture(const QImage& picture, const QString& path);

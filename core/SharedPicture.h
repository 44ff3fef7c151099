#pragma once

#include <QImage>

class MirvakCamera;

/// The picture of a camera's image as 24-bit RGB, without a copy of its pixels: they stay as they are for as
/// long as any copy of the picture lives, whatever is done to the image, also after the image and the camera
/// are gone. Null for a null image. Any thread.
QImage sharedPicture(MirvakCamera& camera, void* image);

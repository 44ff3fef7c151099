#pragma once

#include "ImagePool.h"
#include "mirvakcamera.h"

/// What one MirvakCamera owns. The pool is declared first: devices and images give their buffers back to it.
struct MirvakCamera::Impl
{
    mirvak::ImagePool pool;
};

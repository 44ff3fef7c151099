// The fingerprint library: one picture of one finger from a USB sensor, as a BMP file.
//
// Open, ask for the password, ask for a picture until there is one, fetch it, close:
//
//     ZAZ_MODE(0); ZAZ_SETPATH(1, 1);
//     ZAZOpenDeviceEx(&handle, 2, NULL, 2, 2); ZAZVfyPwd(handle, 0xFFFFFFFF, "\0\0\0\0");
//     while (ZAZGetImage(handle, 0xFFFFFFFF) == ZAZ_NO_FINGER) { }
//     ZAZUpImage(handle, 0xFFFFFFFF, pixels, &length); ZAZImgData2BMP(pixels, "finger.bmp");
//     ZAZCloseDeviceEx(handle);
//
// Whatever the sensor's own size, a picture has 256 x 360 pixels of 8 bits, rows from the top down without
// gaps, the finger dark on white: scaled to fit, in the middle of white.
//
// Sensors are those that the distribution's driver library knows; a small program beside this library drives
// them, so that a driver that hangs or fails costs a capture and nothing else. Where none of them is
// attached, or the virtual desk (environment variable LUMRO_DESK) says that no real device is wanted, the
// desk's prints take their place. Nothing of a finger is kept: a picture is gone with its handle.
//
// One user at a time has the sensor. A later handle takes it over, and the one that had it gets
// ZAZ_TAKEN_OVER.
//
// No call throws or ends the process. Each may be called on any thread, those of one handle one after the
// other. ZAZVfyPwd waits 1.5 s at most, ZAZGetImage ZAZ_POLL_MILLISECONDS, ZAZCloseDeviceEx 0.5 s; the others
// do not wait.
#pragma once

#define ZAZ_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

enum ZazResult {
    ZAZ_OK = 0,
    ZAZ_NO_FINGER = 2, // ask again
    ZAZ_BAD_ARGUMENT = -1,
    ZAZ_NO_SENSOR = -2,  // none is attached, or none can be opened
    ZAZ_LOST = -3,       // it was pulled out, or failed (one line on standard error)
    ZAZ_TAKEN_OVER = -4, // a later handle has it
    ZAZ_NO_PICTURE = -5, // none has been taken with this handle
    ZAZ_IO_ERROR = -6,   // the file cannot be written (one line on standard error)
    ZAZ_NO_MEMORY = -7
};

enum {
    ZAZ_WIDTH = 256,
    ZAZ_HEIGHT = 360,
    ZAZ_BYTES = ZAZ_WIDTH * ZAZ_HEIGHT,
    /* How long ZAZGetImage waits for a finger. Callers count their polls, 1201 of them: 24 seconds. */
    ZAZ_POLL_MILLISECONDS = 20
};

/// The library's way of working: 0 is the only one. BAD_ARGUMENT.
ZAZ_API int ZAZ_MODE(int mode);
/// Which sensor the next handle gets where several are attached: `mode` 1 the first, 2 the second, 3 the
/// third; where there are fewer, the first. `path` 1: over USB, the only one. BAD_ARGUMENT.
ZAZ_API int ZAZ_SETPATH(int mode, int path);
/// Makes a handle, and begins to look for the sensor and to open it. `type` 2: USB; the other arguments are
/// those of other connections and mean nothing. BAD_ARGUMENT, NO_MEMORY: there is no handle.
ZAZ_API int ZAZOpenDeviceEx(int* handle, int type, void* port, int rate, int packet);
/// Whether there is a sensor that can be used. `password`: four zero bytes. A sensor that is still being
/// opened after 1.5 s counts as one. BAD_ARGUMENT, NO_SENSOR, TAKEN_OVER.
ZAZ_API int ZAZVfyPwd(int handle, unsigned address, const unsigned char* password);
/// OK: the picture of a finger has been taken, one for each handle. NO_FINGER, after ZAZ_POLL_MILLISECONDS;
/// everything else is final: BAD_ARGUMENT, NO_SENSOR, LOST, TAKEN_OVER.
ZAZ_API int ZAZGetImage(int handle, unsigned address);
/// Copies the picture; `length` becomes ZAZ_BYTES and may be null. BAD_ARGUMENT, NO_PICTURE.
ZAZ_API int ZAZUpImage(int handle, unsigned address, unsigned char* pixels /* ZAZ_BYTES */, int* length);
/// Writes a picture as a grey BMP file that its owner alone may read. It appears whole and takes the place of
/// a file of that name. `path` in UTF-8. Needs no handle. BAD_ARGUMENT, IO_ERROR.
ZAZ_API int ZAZImgData2BMP(const unsigned char* pixels /* ZAZ_BYTES */, const char* path);
/// Gives the sensor back; the handle is gone. BAD_ARGUMENT.
ZAZ_API int ZAZCloseDeviceEx(int handle);

#ifdef __cplusplus
}
#endif

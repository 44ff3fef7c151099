// The camera library: devices, live frames, image operations, PDF files, codes, hardware keys, colours.
//
// One MirvakCamera per process. No call throws. Integer results are 0 for success and one of MirvakResult
// otherwise, unless a count or a type is meant. All texts are UTF-8.
//
// Images. A handle (void*) stands for one picture: 8 bits a channel, 3 channels, order red, green, blue,
// origin top left, rows without padding, and a resolution in dots per inch. Whoever obtains a handle
// (Clone, Merge, DeskewAll, BookFlat, DrawLine) releases it with MirvakImage_Release. The handle given to a
// frame callback belongs to the library and is valid until the callback returns; it may be changed in place.
// A null handle gets MIRVAK_BAD_HANDLE, never a crash; a handle that was released must not be used again.
//
// Threads. Image and Color calls are reentrant: different images may be worked on by different threads, one
// image by one thread at a time. MirvakImage_CheckPage and MirvakImage_JudgePage keep a memory of their own
// and are called by one thread at a time each; so are the PDF calls, which keep the pages, and the
// ZBarcode calls, which keep what was read. Devs, Device and Hid calls are made by one thread (the GUI
// thread), except where noted.
#pragma once

#include <memory>
#include <string>
#include <vector>

#define MIRVAK_API __attribute__((visibility("default")))

enum MirvakResult {
    MIRVAK_OK = 0,
    MIRVAK_BAD_HANDLE = -1,   // null handle, or a device that is not known
    MIRVAK_BAD_ARGUMENT = -2, // index, size, rectangle or path that makes no sense
    MIRVAK_NO_DEVICE = -3,    // the device is gone or cannot be opened
    MIRVAK_BUSY = -4,         // the device already streams, or another program holds it
    MIRVAK_IO_ERROR = -5,     // the disk or the device refused; errno stands on standard error
    MIRVAK_NOT_FOUND = -6,    // nothing was detected in the picture
    MIRVAK_NO_MEMORY = -7,
    MIRVAK_EXISTS = -8,    // a file has the name; a new file never replaces one
    MIRVAK_NO_ACCESS = -9, // the user may not open the device
    MIRVAK_STOPPED = -10,  // the progress callback has ended the call
};

/// One frame. `image` is valid until the callback returns; null means that the stream has ended by itself
/// (device unplugged or failed) and that no further frame will come. `byteSize` is width * height * 3; width
/// and height are in pixels. `userData` is always null. Called on the device's capture thread.
using MirvakFrameCallback =
    void (*)(void* image, void* userData, int byteSize, int width, int height, void* context);

/// How far a long call has come: `done` of `count` parts, never fewer than before and all of them at the end.
/// 0: go on; any other answer ends the call soon, with MIRVAK_STOPPED. Called on the thread of the call.
using MirvakProgressCallback = int (*)(int done, int count, void* context);

/// One press of a hardware key: 2 capture, 8 zoom in, 9 zoom out, above 9 the key's own number. Called on the
/// key listener's thread.
using MirvakKeyCallback = void (*)(int key, void* context);

/// The list of cameras has become another one. Called on the thread of the watch.
using MirvakDevsCallback = void (*)(void* context);

/// What can be set at a camera. A switch ("_AUTO") stands before the value that it holds while it is on.
enum MirvakControl {
    MIRVAK_FOCUS_AUTO = 0,
    MIRVAK_FOCUS = 1, // in the camera's own steps
    MIRVAK_EXPOSURE_AUTO = 2,
    MIRVAK_EXPOSURE_TIME = 3, // in 0.1 ms
    MIRVAK_GAIN = 4,
    MIRVAK_WHITE_BALANCE_AUTO = 5,
    MIRVAK_WHITE_BALANCE = 6, // colour temperature of the light, in kelvin
    MIRVAK_BRIGHTNESS = 7,
    MIRVAK_CONTRAST = 8,
    MIRVAK_SATURATION = 9,
    MIRVAK_SHARPNESS = 10,
    MIRVAK_BACKLIGHT = 11,    // compensation of light from behind
    MIRVAK_ANTI_FLICKER = 12, // frequency of the mains: 0 none, 1 50 Hz, 2 60 Hz, 3 found by the camera
};

enum MirvakControlKind {
    MIRVAK_SWITCH = 0, // 0 or 1
    MIRVAK_RANGE = 1,
    MIRVAK_MENU = 2,
};

/// One control as it is now. Values of a range without a unit above are in the camera's own steps.
struct MirvakControlInfo
{
    int control;                // MirvakControl
    int kind;                   // MirvakControlKind
    int minimum, maximum, step; // step is 1 or more
    int standard;               // as the camera was delivered
    int value;                  // now, also what an automatic has chosen, where the camera tells
    int entries;                // of a menu: bit n is set when the value n is offered; 0 for other kinds
    bool isHeld;                // an automatic works it, it cannot be set
};

/// A point in pixels from the top left corner of the picture.
struct MirvakPointF
{
    float x, y;
};

/// The corners of a page, clockwise as seen, the first the one nearest to the top left of the picture. A
/// corner may lie slightly outside.
struct MirvakOutline
{
    MirvakPointF corners[4];
};

/// Whether the page before the camera will be good when it is captured now. From MIRVAK_SHOT_LEAVES_PICTURE
/// on something is wrong; of several things the worst.
enum MirvakShot {
    MIRVAK_SHOT_NO_PAGE = 0,
    MIRVAK_SHOT_LOOKING = 1, // a page, but it is too early to tell
    MIRVAK_SHOT_GOOD = 2,    // found for sure, whole, sharp, at rest, lit
    MIRVAK_SHOT_LEAVES_PICTURE = 3,
    MIRVAK_SHOT_MOVING = 4,
    MIRVAK_SHOT_TOO_DARK = 5,
    MIRVAK_SHOT_TOO_BLURRED = 6,
    MIRVAK_SHOT_REFLECTION = 7, // a lamp is mirrored on the page
    MIRVAK_SHOT_NOT_SURE = 8,   // what lies there may be another outline
};

struct MirvakVerdict
{
    MirvakShot shot;
    bool found;         // in this very frame
    MirvakOutline page; // where it was found
};

/// A word that lies invisibly over the picture of a PDF's page, to be found and copied.
struct MirvakPdfWord
{
    std::string text; // UTF-8; what is none is left out
    /// Around the word, clockwise from where its upper edge begins: the first two give the direction of
    /// reading. In pixels from the outer corner at the top left of the picture as seen (turned as its file
    /// says).
    MirvakPointF corners[4];
    int line;           // words of one line have the same number
    bool isSpaceBehind; // between it and the next word of its line
};

enum MirvakPdfSheet {
    MIRVAK_PDF_OWN_SIZE = 0, // each page as large as its picture
    MIRVAK_PDF_LYING_A4 = 1, // A4 lying, margins of 30 points, the picture at the top left as large as fits
};

/// How a PDF is made of its pages.
struct MirvakPdfOptions
{
    MirvakPdfSheet sheet = MIRVAK_PDF_OWN_SIZE;
    /// Conforms to PDF/A-2b (ISO 19005-2); a JPEG in four inks becomes RGB, without loss.
    bool isArchival = false;
    std::string title; // UTF-8, what viewers call the document; empty for none
};

class MIRVAK_API MirvakCamera
{
public:
    MirvakCamera();
    ~MirvakCamera();
    MirvakCamera(const MirvakCamera&) = delete;
    MirvakCamera& operator=(const MirvakCamera&) = delete;

    // --- Devs: the device layer -------------------------------------------------------------------------
    /// Looks for cameras and keeps the list until Deinit. May be called again to look anew; MIRVAK_BUSY, and
    /// the old list stays, while a device is open. Finding none is success.
    int MirvakDevs_Init();
    /// Lists anew while devices are open: they stay open, their handles stay valid and their streams run on.
    /// Every index is good until the next Init or Refresh only. MIRVAK_NO_DEVICE, and nothing is listed,
    /// before Init.
    int MirvakDevs_Refresh();
    /// From now on `changed` tells, within a second, that cameras have come, gone or become accessible; the
    /// list itself changes with the Refresh that follows, which then asks no device and returns at once. A
    /// null callback ends the watch and returns after its last call; Deinit ends it too, Init does not. Must
    /// not be called from the callback. MIRVAK_NO_DEVICE before Init.
    int MirvakDevs_Watch(MirvakDevsCallback changed, void* context);
    /// Stops and releases every device that is still open and forgets the list.
    int MirvakDevs_Deinit();

    // --- Device -----------------------------------------------------------------------------------------
    int MirvakDevice_GetDevCount();
    /// Empty for an index outside the list; the same holds for the USB id.
    std::string MirvakDevice_GetFriendlyName(int index);
    /// Vendor and product as 8 lowercase hexadecimal digits, for example "1b172000"; empty for a camera that
    /// is not on the USB.
    std::string MirvakDevice_GetDevUsbID(int index);
    /// What tells the device from all others and finds it again in a later list, also after it was unplugged:
    /// on the USB the id with the serial number, or with the port where there is no number or several devices
    /// carry the same; the name of a virtual one. Not for the eyes of users, and to be compared only.
    std::string MirvakDevice_GetDevIdentity(int index);
    /// 1 main document camera, 2 other colour camera, 3 infrared; 0 for an index outside the list.
    int MirvakDevice_GetCameraType(int index);
    /// Opens the device; null when it cannot be opened, and also after it was unplugged until a list has
    /// found it again. Released by MirvakDevice_Release.
    void* MirvakDevice_Create(int index);
    /// How the last Create went: MIRVAK_OK, MIRVAK_BAD_ARGUMENT for an index outside the list,
    /// MIRVAK_NO_ACCESS, MIRVAK_BUSY, MIRVAK_NO_DEVICE.
    int MirvakDevice_GetCreateResult();
    /// Stops the stream if it runs and frees the device.
    int MirvakDevice_Release(void* device);
    /// 2 when the compressed stream is the better one, 1 for the raw one; 0 for a bad handle.
    int MirvakDevice_GetSubtype(void* device);
    /// Number of resolutions of `format` (1 raw, 2 compressed). A device with one kind offers it under both.
    int MirvakDevice_GetResolutionSize(void* device, int format);
    /// Width and height in pixels of one entry; 0 for a bad handle or index.
    int MirvakDevice_GetResolutionWidth(void* device, int format, int index);
    int MirvakDevice_GetResolutionHeight(void* device, int format, int index);
    /// Starts the stream. `frameMode` is the number of frames that may wait for the callback (2: the newest
    /// only); a slow callback loses frames and never delays newer ones. Results: MIRVAK_BAD_HANDLE,
    /// MIRVAK_BAD_ARGUMENT, MIRVAK_BUSY, MIRVAK_NO_DEVICE, MIRVAK_IO_ERROR.
    int MirvakDevice_StartPreview(void* device,
                                  int format,
                                  int resolutionIndex,
                                  int frameMode,
                                  MirvakFrameCallback callback,
                                  void* context);
    /// Returns after the last callback has returned. From a frame callback it stops nothing and answers
    /// MIRVAK_BUSY; Release does too.
    int MirvakDevice_StopPreview(void* device);
    /// Paper size 3 (A3): everything the camera sees; 4 (A4): the middle of it, half the area. Sets the
    /// camera's zoom, or where it has none cuts the middle out of each frame and scales it up, so that the
    /// size of the frames stays. A device starts with 3, and its own zoom is set back when it is
    /// released. Thread-safe against the running stream; may be
    /// called from a frame callback.
    int MirvakDevice_SetCameraSize(void* device, int size);
    /// Looks for the page in `image` and reports in `size` the paper size (3 or 4) to change to: A3 when the
    /// page takes more than `high` of the picture's area or reaches beyond it, A4 when it would fit the
    /// smaller cut. A page smaller than `low` is not judged; both are shares from 0 to 1. MIRVAK_NOT_FOUND,
    /// and `size` stays, when no page is seen or the present size is right. May be called from a callback.
    int MirvakDevice_JudgeCameraSize(void* device, void* image, int& size, double low, double high);

    // The camera's controls. Thread-safe against each other and the running stream; each call asks the
    // camera, which may take as long as the camera takes to answer.
    /// How many of MirvakControl the camera offers; 0 for a bad handle.
    int MirvakDevice_GetControlCount(void* device);
    /// One of them, from 0, in the order of MirvakControl. Results: MIRVAK_BAD_HANDLE, MIRVAK_BAD_ARGUMENT
    /// outside the list, MIRVAK_NO_DEVICE, MIRVAK_IO_ERROR.
    int MirvakDevice_GetControl(void* device, int index, MirvakControlInfo& info);
    /// Holds from the next frames on, and longer than the handle: until the camera loses its power. A value
    /// outside the range becomes its end, one between two steps the nearer one. Results: MIRVAK_BAD_HANDLE,
    /// MIRVAK_BAD_ARGUMENT for what the camera does not offer, MIRVAK_BUSY for what an automatic holds,
    /// MIRVAK_NO_DEVICE, MIRVAK_IO_ERROR.
    int MirvakDevice_SetControl(void* device, int control, int value);
    /// Focuses on what lies at this place of the frames, from 0 (left, top) to 1, and returns at once. With a
    /// focus that can be set it is tried out in frames to come, at most 20 positions, and stays at the
    /// sharpest with the automatic off; without, the automatic begins anew. The next call, a set focus and
    /// the end of the stream give the search up. Results: MIRVAK_BAD_HANDLE, MIRVAK_BAD_ARGUMENT outside the
    /// frame, MIRVAK_NOT_FOUND without any focus, else as for SetControl.
    int MirvakDevice_FocusAt(void* device, double x, double y);
    /// MIRVAK_OK when no search runs; MIRVAK_BUSY while one runs; MIRVAK_NOT_FOUND when the last one saw
    /// nothing to focus on, and all is as before it.
    int MirvakDevice_GetFocusState(void* device);

    // --- Image ------------------------------------------------------------------------------------------
    /// A copy; null for a null handle or without memory. Costs next to nothing: the pixels are copied when
    /// one of the two is changed. The two may be used on different threads.
    void* MirvakImage_Clone(void* image);
    int MirvakImage_Release(void* image);
    int MirvakImage_GetWidth(void* image);  ///< pixels; 0 for null
    int MirvakImage_GetHeight(void* image); ///< pixels; 0 for null
    /// Copies width * height * 3 bytes, rows without padding, into `rgb`, which the caller owns.
    int MirvakImage_GetImageRGBData(void* image, unsigned char* rgb);
    /// The same bytes without a copy, for as long as any copy of the pointer lives, which may be longer than
    /// the image and this object; they never change, whatever is done to the image. Null for a null handle or
    /// without memory. Any thread may let go.
    std::shared_ptr<const unsigned char> MirvakImage_SharePixels(void* image);
    /// The same bytes with their description: channels 3, bitsPerChannel 8, stride in bytes, format 0 (RGB).
    /// `byteCount` carries the size of `buffer` in and the bytes written out.
    int MirvakImage_GetImageData(void* image,
                                 unsigned char* buffer,
                                 int& width,
                                 int& height,
                                 int& channels,
                                 int& bitsPerChannel,
                                 int& stride,
                                 int& format,
                                 int& byteCount);
    /// Turns clockwise about the centre. Multiples of 90 degrees are exact and swap the size as needed; other
    /// angles grow the picture so that nothing is cut off, on white.
    int MirvakImage_Rotate(void* image, double degrees);
    /// Cuts out the rectangle, clipped to the picture; MIRVAK_BAD_ARGUMENT when nothing is left.
    int MirvakImage_Crop(void* image, int left, int top, int width, int height);
    /// Finds the page, takes the perspective out and crops to it, `margin` pixels inside each edge. A page of
    /// a usual paper or card gets that one's proportions and its true resolution; the edge of paper is then
    /// filled with the paper beside it and not cut off. Without a confident outline it straightens by the
    /// text lines alone and cuts nothing away.
    int MirvakImage_Deskew(void* image, int margin);
    /// Does so with each of the pages, cards and receipts that lie side by side: `pages` receives a new image
    /// of each, row by row from the top, each row from the left; the caller releases every one. `image` stays
    /// as it is. MIRVAK_NOT_FOUND, and `pages` is empty, when none stands out with confidence: then
    /// MirvakImage_Deskew makes one page of the picture without cutting anything away. In every other error
    /// `pages` is empty too.
    int MirvakImage_DeskewAll(void* image, int margin, std::vector<void*>& pages);
    /// The outlines of the same pages in the same order, to a few pixels; MIRVAK_NOT_FOUND without any.
    int MirvakImage_FindPages(void* image, std::vector<MirvakOutline>& outlines);
    /// Flattens an open book, or one page that is bent along its spine: lines of print become straight, what
    /// the bend squeezes gets its breadth back, the gutter's shadow goes, the paper keeps its tint. The spine
    /// is looked for near the frame's middle, up to 15 degrees from upright. `removeFinger` fills fingers
    /// that come in over the paper's ends with paper; print is never painted over. `pageMode` 1: one picture,
    /// in `left`, of the page or of both pages side by side; 2: the left and the right page, and in `left`
    /// alone where there is one page only. Where no bend explains the lines, `left` is the page merely
    /// straightened. `image` stays as it is; the caller releases both results, which carry its resolution,
    /// for they are as fine as it is where it is finest. MIRVAK_NOT_FOUND without paper in the picture; with
    /// every error both are null.
    int MirvakImage_BookFlat(void* image, bool removeFinger, int pageMode, void*& left, void*& right);
    /// `mode` 0 nearest, 1 bilinear, 2 area (for reducing), 3 bicubic.
    int MirvakImage_Resize(void* image, int width, int height, int mode);
    int MirvakImage_DelBGColor(void* image); ///< paper becomes white, uneven light goes, ink and colour stay
    int MirvakImage_Threshold(void* image);  ///< black and white by a local threshold
    int MirvakImage_EnhanceColor(void* image);             ///< contrast and saturation of a printed page
    int MirvakImage_WhitePaperSeal(void* image, int seal); ///< white paper, seal strengthened; 0 red, 1 blue
    int MirvakImage_DocumentProcess(void* image);          ///< white paper, even light, crisp dark text
    /// Writes `text` with its upper left corner at `anchor`. fontSize in pixels (height of a capital letter
    /// and descender), colour as of MirvakColor_SetRgbaToInt (alpha 0 is opaque), angle in degrees clockwise.
    /// Parts outside the picture are cut off.
    int MirvakImage_Watermark(
        void* image, const char* text, MirvakPointF anchor, int fontSize, int colour, float angle);
    /// A new image: `base` with `inset` scaled to width x height at (x, y), clipped. Null on bad arguments.
    void* MirvakImage_Merge(void* base, void* inset, int x, int y, int width, int height);
    /// A new image with the outline of the page drawn in `colour`, `width` pixels thick; an unchanged copy
    /// when no page is found. Null for a null handle. Of pictures that look alike, one after the other on one
    /// thread, each third is searched, and the others get the same outline; of a camera's frames that change,
    /// each second one.
    void* MirvakImage_DrawLine(void* image, int colour, int width);
    /// Finds the same outline in the frames of a stream, and says whether the page in them will be good. A
    /// verdict stands long enough to be read, whatever single frames show; a pause of a second and another
    /// size of frame begin anew. That a page leaves the picture is also said where too little of it is seen
    /// for an outline. Costs about a millisecond beside the search. `verdict` is MIRVAK_SHOT_NO_PAGE with
    /// every error.
    int MirvakImage_JudgePage(void* image, MirvakVerdict& verdict);
    /// Draws these outlines into the image itself, as MirvakImage_DrawLine does into a copy.
    int
    MirvakImage_DrawOutlines(void* image, const std::vector<MirvakOutline>& outlines, int colour, int width);
    /// Watches a stream for a new page; three to ten pictures a second are enough. `flag` comes back false
    /// exactly once for each new page, when it has lain still for 0.3 s with no hand in sight, true
    /// otherwise. Changing light, focus and exposure, a nudge of a centimetre, the bare desk and the last
    /// page put back are no new page. `value` is the measured difference to the last page, 0 to 1: 0.32
    /// where 1.5 % of the picture shows something new, 1 before the first page; while something moves it
    /// stays as it was. `reset` forgets the memory, and so does another size of picture; `threshold` is the
    /// difference from which a page counts as new.
    int MirvakImage_CheckPage(void* image, bool& flag, double& value, bool reset, double threshold);
    /// Writes the picture; the extension (jpg, jpeg, png, bmp, in any case) chooses the format, `quality` (1
    /// to 100) holds for JPEG, `mode` is not used. The resolution goes into the file. The file is a new one,
    /// MIRVAK_EXISTS otherwise, and appears under its name only when it is complete and synced.
    int MirvakImage_Save(const char* path, void* image, int quality, int mode);
    /// The same for a file that its owner alone may read.
    int MirvakImage_SavePrivate(const char* path, void* image, int quality);

    // --- Picture: the next state of a picture's file ------------------------------------------------------
    // Each reads the file `from` (JPEG, PNG or BMP) and writes the changed picture as the new file `to`,
    // complete and synced, in the format that the name `from` stands for (JPEG at quality 95) and with its
    // resolution. `from` stays as it is. Reentrant, and need no object. Results: MIRVAK_BAD_ARGUMENT for a
    // path or a picture that makes no sense, MIRVAK_EXISTS when something has the name `to`, MIRVAK_IO_ERROR.
    /// Turns clockwise by quarters. A JPEG whose sides are whole blocks is turned without loss.
    static int MirvakPicture_Turn(const char* from, const char* to, int quarters);
    /// As MirvakImage_Deskew. MIRVAK_NOT_FOUND, and no file, when there is nothing to set straight.
    static int MirvakPicture_Straighten(const char* from, const char* to, int margin);
    /// Cuts out what lies between the corners and takes the perspective out. They are clockwise from the top
    /// left, in parts of the upright picture's width and height.
    static int MirvakPicture_Cut(const char* from, const char* to, const MirvakPointF (&corners)[4]);
    /// Where the page lies, as MirvakPicture_Cut takes it; MIRVAK_NOT_FOUND without one. Writes nothing.
    static int MirvakPicture_FindPage(const char* from, MirvakPointF (&corners)[4]);

    // --- PDF: pictures become the pages of one file -----------------------------------------------------
    // Called by one thread at a time, any thread.
    /// Looks at a JPEG, PNG or BMP file, told by its first bytes, and remembers it as the next page; the
    /// pixels are read at Save, and the file must stay as it is until then. The page has the picture's size
    /// at its own resolution (215 dots per inch where it names none), or that of the paper it matches within
    /// 2 %, and the picture stands upright on it. Results: MIRVAK_BAD_ARGUMENT for a null or empty path and
    /// for a file that is no such picture, broken or cut short, or has over 200 million pixels;
    /// MIRVAK_IO_ERROR when it cannot be read. The pages before it stay in every case.
    int MirvakPDF_AddPage(const char* imagePath);
    /// Gives the page that was added last its words, in reading order, in place of those it had. They lie
    /// over the picture in Unicode, and nothing of them is seen. MIRVAK_BAD_ARGUMENT without a page.
    int MirvakPDF_SetWords(const std::vector<MirvakPdfWord>& words);
    /// Writes the remembered pages and forgets them, whatever the result. A JPEG goes in byte for byte, every
    /// other picture without loss; parts that are transparent become white. No more than one picture is in
    /// memory at a time. The file is a new one and appears under its name only when it is complete and
    /// synced. Results: MIRVAK_BAD_ARGUMENT without a page or a path; MIRVAK_EXISTS when something has the
    /// name; MIRVAK_IO_ERROR when a picture has vanished or changed, or the file cannot be written.
    int MirvakPDF_Save(const char* pdfPath);
    /// The same with a callback before each page and after the last; null for none. MIRVAK_STOPPED: no file
    /// is left, and the pages are forgotten.
    int MirvakPDF_SaveWatched(const char* pdfPath, MirvakProgressCallback progress, void* context);
    /// The same, made as `options` say.
    int MirvakPDF_SaveAs(const char* pdfPath,
                         const MirvakPdfOptions& options,
                         MirvakProgressCallback progress,
                         void* context);

    // --- ZBarcode: bar and matrix codes ------------------------------------------------------------------
    /// Reads all codes of the picture, whichever way they are turned (MaxiCode upright only), light on dark
    /// too: EAN, UPC, Code 39, 93 and 128, Interleaved 2 of 5, Codabar, DataBar; QR and Micro QR, Data
    /// Matrix, Aztec, PDF417, MaxiCode. Half a second for eight megapixels is usual.
    /// @return their number, 0 for none; MIRVAK_BAD_HANDLE, MIRVAK_NO_MEMORY.
    /// Decoding runs in the program "mirvakcodes" beside this library; where it is missing nothing is found,
    /// with a line on standard error.
    int MirvakZBarcode_Discern(void* image);
    /// The same with a callback, in at most a tenth of a second each; null for none. MIRVAK_STOPPED: no codes
    /// are kept.
    int MirvakZBarcode_DiscernWatched(void* image, MirvakProgressCallback progress, void* context);
    /// The text of one code of the last Discern, from 0: top to bottom, side by side from left to right.
    /// Valid UTF-8: bytes that are not are taken for Chinese, Japanese or Western European, and a NUL becomes
    /// its sign (U+2400), so that nothing cuts the text there; other control characters stay. Empty for an
    /// index outside.
    std::string MirvakZBarcode_GetData(int index);

    // --- Hid: the camera's own keys ---------------------------------------------------------------------
    /// Starts listening to the keys of all document cameras; `key` reports those of the virtual desk,
    /// `usbKey` those of real cameras. A camera that is plugged in later is taken along.
    int
    MirvakHid_Init(MirvakKeyCallback key, void* keyContext, MirvakKeyCallback usbKey, void* usbKeyContext);
    /// Returns after the last callback has returned.
    int MirvakHid_Deinit();

    // --- Color ------------------------------------------------------------------------------------------
    int MirvakColor_SetRgbaToInt(int red,
                                 int green,
                                 int blue,
                                 int alpha); ///< alpha << 24 | red << 16 | green << 8 | blue

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
};

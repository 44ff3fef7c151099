#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// The virtual desk: devices that exist only as files. Described by a file in libconfig syntax whose path
/// stands in the environment variable LUMRO_DESK:
///
///     cameras = (
///       { name = "Desk camera"; type = 1; usb = "1b172000"; source = "photos"; fps = 30;
///         resolutions = [ "1600x1200", "native" ]; hold = 6.0; loop = true; } );
///     real        = false;                            // leave the devices of this machine out
///     keys        = { camera = 0; fifo = "keys"; };   // a line with a number presses that key
///     idcard      = { cards = "cards"; };
///     fingerprint = { prints = "prints"; delay = 0.5; };
///     printer     = { paper = "paper"; };             // what a receipt printer prints becomes pictures
///     there
///
/// Relative paths start at the folder of the file. A camera needs `name` and `source`, everything else has a
/// default. Faults of a camera: unplug_after and stall_after (seconds after the start of the stream),
/// corrupt_every (each n-th frame is broken), fail_create, fail_start, refused (no right to open it), held
/// (another program streams from it). `controls` says what can be set at it: true for all, or a list of
/// names from controlNames; the pictures change as those of a real camera would. The file may be changed
/// while the program runs: a camera that is no longer in it is unplugged, one that is new in it is plugged
/// in. A setting that a camera does not know is an error, so that a misspelt one is noticed.
struct DeskConfig
{
    struct Size
    {
        int width, height; ///< pixels; 0 x 0 stands for "native": each picture in its own size
        bool isNative() const { return width == 0; }
    };

    struct Camera
    {
        std::string name;
        int type = 0;      ///< 1 main, 2 colour, 3 infrared; 0: by the rule for all cameras
        std::string usbId; ///< 8 lowercase hexadecimal digits, or empty
        std::filesystem::path source;
        double framesPerSecond = 30;
        std::vector<Size> resolutions; ///< never empty; native alone when none is named
        double holdSeconds = 4;        ///< 0: one picture a frame
        bool loop = true;
        std::optional<double> unplugAfter; ///< seconds
        std::optional<double> stallAfter;  ///< seconds
        int corruptEvery = 0;              ///< 0: never
        bool failCreate = false;
        bool failStart = false;
        bool refused = false;      ///< the user may not open it
        bool held = false;         ///< another program uses it
        std::vector<int> controls; ///< rising places in controlNames; empty: nothing can be set
    };

    struct Keys
    {
        int camera = 0; ///< index of the camera that carries the keys
        std::filesystem::path fifo;
    };

    struct IdCard
    {
        std::filesystem::path cards;
    };

    struct Fingerprint
    {
        std::filesystem::path prints;
        double delaySeconds = 0.5;
    };

    struct Printer
    {
        std::filesystem::path paper; ///< folder; need not exist
    };

    /// What can be set at a camera, in the order of the camera library's own list.
    static constexpr const char* controlNames[] = {"focus_auto",
                                                   "focus",
                                                   "exposure_auto",
                                                   "exposure_time",
                                                   "gain",
                                                   "white_balance_auto",
                                                   "white_balance",
                                                   "brightness",
                                                   "contrast",
                                                   "saturation",
                                                   "sharpness",
                                                   "backlight",
                                                   "anti_flicker"};

    std::vector<Camera> cameras;
    bool realDevices = true;
    std::optional<Keys> keys;
    std::optional<IdCard> idCard;
    std::optional<Fingerprint> fingerprint;
    std::optional<Printer> printer;

    /// Reads the file. On failure nothing is returned and `error` names the file, the line and the reason.
    static std::optional<DeskConfig> load(const std::filesystem::path& path, std::string& error);
    /// The desk that LUMRO_DESK names. Nothing without the variable, and nothing with a broken file, which
    /// gets one line on standard error.
    static std::optional<DeskConfig> fromEnvironment();
    /// The path in LUMRO_DESK; empty without the variable.
    static std::filesystem::path pathInEnvironment();
};

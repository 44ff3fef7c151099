#include "RatioReporter.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    const QTemporaryDir home; // settings of the run
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    Q_INIT_RESOURCE(images);

    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    reporter.compare("frame path / bare JPEG decoding", "FramePath", {"BareJpegDecode"}, 1.15);
    reporter.compare(
        "frame path with outline / bare JPEG decoding", "FramePathWithOutline", {"BareJpegDecode"}, 1.4);
    reporter.compare("page check / bare JPEG decoding (or 4 ms)", "PageCheckAtRest", {"BareJpegDecode"}, 0.1);
    reporter.compare(
        "page check, another page each second (or 4 ms)", "PageCheckTurning", {"BareJpegDecode"}, 0.1);
    reporter.compare("single shot, cropped / warp and JPEG encoding",
                     "CaptureInMemory",
                     {"BareWarp", "BareJpegEncode"},
                     1.6);
    reporter.compare(
        "the same with the disk's sync (not limited)", "CaptureOnDisk", {"BareWarp", "BareJpegEncode"}, 0);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}

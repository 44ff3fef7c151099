// The live picture while it is filmed: the longest time between two paintings of it beside that without a
// recording. No frame may come later than by one interval of the camera.
#include "Dialogs.h"
#include "LumroScanner.h"
#include "Settings.h"
#include "VideoRecord.h"
#include "VideoView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int seconds = 10;
constexpr double intervalMs = 1000.0 / 30;

/// Notes the times between the paintings of a widget.
class PaintTimes : public QObject
{
public:
    void begin()
    {
        gaps_.clear();
        clock_.invalidate();
    }
    double longest() const { return gaps_.empty() ? 0 : *std::max_element(gaps_.begin(), gaps_.end()); }
    int count() const { return int(gaps_.size()); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        if (clock_.isValid())
            gaps_.push_back(double(clock_.nsecsElapsed()) / 1e6);
        clock_.start();
        return false;
    }

private:
    QElapsedTimer clock_;
    std::vector<double> gaps_; ///< milliseconds
};

/// One camera over all made pages, which change twice a second.
void writeDesk(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write("real = false; cameras = ( { name = \"Desk camera\"; type = 1; usb = \"1b172000\"; fps = 30; "
               "hold = 0.5; source = \"" LUMRO_DESK_DIR "/pictures/1600x1200\"; "
               "resolutions = [ \"1600x1200\" ]; } );\n");
}

void runFor(int milliseconds)
{
    QTimer::singleShot(milliseconds, QCoreApplication::instance(), &QCoreApplication::quit);
    QApplication::exec();
}

void print(const char* what, double path, double limit, double allowed)
{
    std::printf("%-58s %9.2f %9.2f %7.3f %8.2f\n", what, path, limit, path / limit, allowed);
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    writeDesk(home.filePath(QStringLiteral("desk.cfg")));
    qputenv("LUMRO_DESK", home.filePath(QStringLiteral("desk.cfg")).toUtf8());
    const QApplication app(argc, argv);
    Q_INIT_RESOURCE(images);
    ConfigSettings store;
    settings::setSavePath(store, home.filePath(QStringLiteral("films")));
    Dialogs::instance().ask = [](QMessageBox&) { return QMessageBox::Ok; };
    LumroScanner window;
    window.resize(1600, 1000);
    window.show();
    PaintTimes paintings;
    window.findChild<VideoView*>()->installEventFilter(&paintings);
    runFor(3000);

    paintings.begin();
    runFor(seconds * 1000);
    const double alone = paintings.longest();
    const int paintedAlone = paintings.count();
    window.onRecord();
    auto* box = window.findChild<VideoRecord*>();
    if (!box)
        return 1;
    runFor(500); // the encoder's libraries have been loaded, the window of the recording has been painted
    paintings.begin();
    runFor(seconds * 1000);
    print("longest time between two pictures while filming / alone, ms", paintings.longest(), alone, 2);
    print("the same / two intervals of the camera", paintings.longest(), 2 * intervalMs, 1);
    print("pictures shown alone / while filming", paintedAlone, paintings.count(), 1.02);
    box->onStop();
    window.close();
    return 0;
}

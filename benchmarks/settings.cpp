// From the wish for the settings to their first painting, after they were shown once. Its limit is one frame
// interval of the preview.
#include "ConfigSet.h"
#include "Look.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int runs = 25;
constexpr double frameIntervalMs = 1000.0 / 30;

/// Notes when the dialog has been painted.
class PaintWatch : public QObject
{
public:
    bool painted = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

double openOnce(ConfigSet& dialog)
{
    PaintWatch watch;
    dialog.installEventFilter(&watch);
    QElapsedTimer clock;
    clock.start();
    dialog.show();
    while (!watch.painted)
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    QApplication::processEvents(); // what the painting sent to the display
    const double elapsed = double(clock.nsecsElapsed()) / 1e6;
    dialog.hide();
    QApplication::processEvents();
    return elapsed;
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home; // settings of the run
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    QApplication app(argc, argv);
    Q_INIT_RESOURCE(images);
    Look::install(app);
    QWidget window;
    window.resize(1000, 700);
    window.show();
    ConfigSet dialog(&window);
    openOnce(dialog);
    std::vector<double> times;
    for (int i = 0; i < runs; ++i)
        times.push_back(openOnce(dialog));
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    const double median = times[runs / 2];
    std::printf("%-58s %9.1f %9.1f %7.2f %8.2f\n",
                "settings dialog, opened again / one frame interval",
                median,
                frameIntervalMs,
                median / frameIntervalMs,
                1.0);
    return 0;
}

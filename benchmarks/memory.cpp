// Resident memory of the program over a long preview: the end beside the first minute.   bench_memory
// [MINUTES]
#include "LumroScanner.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace {

constexpr double allowed = 1.05;

double residentMiB()
{
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("LUMRO_DESK", LUMRO_DESK_DIR "/desk.cfg");
    const QApplication app(argc, argv);
    Q_INIT_RESOURCE(images);
    const int minutes = argc > 1 ? std::atoi(argv[1]) : 10;
    LumroScanner window;
    window.resize(1600, 1000);
    window.show();

    double first = 0;
    QTimer::singleShot(60 * 1000, &window, [&] { first = residentMiB(); });
    QTimer::singleShot(minutes * 60 * 1000, &window, [&] {
        const double last = residentMiB();
        std::printf("%-58s %9.1f %9.1f %7.3f %8.2f\n",
                    (std::to_string(minutes) + " minutes of preview: memory MiB, end / first minute").c_str(),
                    last,
                    first,
                    last / first,
                    allowed);
        window.close();
    });
    return QApplication::exec();
}

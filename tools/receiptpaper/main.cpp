// A receipt printer that exists only as a program, for whoever has no real one.
//   lumropaper FOLDER     makes the device file FOLDER/lp0 and says so on standard output; what is sent to it
//                         becomes FOLDER/receipt-1.png and so on, a new one each time the device was closed
// Ends with its standard input.
#include "PaperTray.h"
#include "PrinterNode.h"

#include <QDir>
#include <QGuiApplication>

#include <array>
#include <cerrno>
#include <cstdio>
#include <poll.h>
#include <thread>

namespace {

constexpr int restMs = 100; // without bytes; then what was printed is saved

/// Until the end of the input.
void serve(const PrinterNode& node, PaperTray& tray)
{
    std::array<pollfd, 2> ends{{{node.descriptor(), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
    while (ends[1].revents == 0) {
        const int ready = poll(ends.data(), ends.size(), restMs);
        if (ready < 0 && errno != EINTR)
            return;
        std::array<char, 4096> bytes;
        if (ready > 0 && ends[0].revents & POLLIN) {
            const ssize_t count = read(node.descriptor(), bytes.data(), bytes.size());
            tray.print(QByteArray(bytes.data(), int(std::max<ssize_t>(count, 0))));
        } else if (ready > 0 && ends[0].revents & POLLHUP) {
            tray.tearOff(); // nobody has the device open
            std::this_thread::sleep_for(std::chrono::milliseconds(restMs));
        } else {
            tray.save();
        }
    }
    tray.save();
}

} // namespace

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1); // it only draws
    const QGuiApplication app(argc, argv);
    const QString folder = QGuiApplication::arguments().value(1);
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        std::fputs("usage: lumropaper FOLDER\n", stderr);
        return 2;
    }
    const PrinterNode node(folder + QStringLiteral("/lp0"));
    if (!node.isValid()) {
        std::fprintf(stderr, "lumropaper: %s: no device file can be made\n", qPrintable(folder));
        return 1;
    }
    std::puts("ready");
    std::fflush(stdout);
    PaperTray tray(folder);
    serve(node, tray);
    return 0;
}

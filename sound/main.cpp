// Plays the shutter's sound for each byte that comes on standard input. Ends with the input, after five
// minutes without a byte, and with an error when the sound cannot be loaded.
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>

#include <array>
#include <unistd.h>

namespace {

constexpr int idleMs = 5 * 60 * 1000;

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QSoundEffect click;
    QObject::connect(&click, &QSoundEffect::statusChanged, &app, [&click] {
        if (click.status() == QSoundEffect::Error)
            QCoreApplication::exit(1);
    });
    click.setSource(QUrl(QStringLiteral("qrc:/shutter.wav")));

    QTimer idle;
    QObject::connect(&idle, &QTimer::timeout, &app, &QCoreApplication::quit);
    idle.start(idleMs);

    QSocketNotifier requests(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&requests, &QSocketNotifier::activated, &app, [&] {
        std::array<char, 64> bytes;
        if (read(STDIN_FILENO, bytes.data(), bytes.size()) <= 0) {
            QCoreApplication::quit();
            return;
        }
        click.play();
        idle.start();
    });
    return QCoreApplication::exec();
}

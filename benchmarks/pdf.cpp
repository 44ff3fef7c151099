// A PDF of 50 pages of 8 megapixels: its size beside its pictures, its time beside a bare copy of the same
// bytes and beside img2pdf, the memory of a process that makes it; and how long the multi-page dialog holds
// the window up while 200 pages are listed and scrolled through. Files lie in memory, so that no disk counts.
#include "Dialogs.h"
#include "PdfEx.h"
#include "mirvakcamera.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QListWidget>
#include <QProcess>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>

namespace {

constexpr int pagesOfPdf = 50;
constexpr int pagesOfDialog = 200;
constexpr int repetitions = 7;

void print(const char* what, double value, double limit, double ratio, double allowed)
{
    std::printf("%-58s %9.1f %9.1f %7.3f %8.2f\n", what, value, limit, ratio, allowed);
}

/// The quickest of the runs, in milliseconds: the least disturbed one.
double quickest(int runs, const std::function<void()>& run)
{
    double best = 1e12;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer time;
        time.start();
        run();
        best = std::min(best, double(time.nsecsElapsed()) / 1e6);
    }
    return best;
}

/// The desk's pictures over and over, each under a name of its own.
QStringList makePages(const QString& folder, int count)
{
    const QDir source(QStringLiteral(LUMRO_DESK_DIR "/pictures/3264x2448"));
    const QFileInfoList pictures = source.entryInfoList({QStringLiteral("*.jpg")}, QDir::Files, QDir::Name);
    QStringList pages;
    for (int i = 0; i < count && !pictures.isEmpty(); ++i) {
        pages << QStringLiteral("%1/page%2.jpg").arg(folder).arg(i, 3, 10, QLatin1Char('0'));
        QFile::copy(pictures[i % pictures.size()].filePath(), pages.last());
    }
    return pages;
}

int makePdf(const QStringList& pages, const QString& path)
{
    MirvakCamera camera;
    for (const QString& page : pages) {
        if (camera.MirvakPDF_AddPage(page.toUtf8().constData()) != MIRVAK_OK)
            return 1;
    }
    QFile::remove(path); // of the measurement before
    return camera.MirvakPDF_Save(path.toUtf8().constData()) == MIRVAK_OK ? 0 : 1;
}

void copyBytes(const QStringList& pages, const QString& path)
{
    QFile out(path);
    out.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    for (const QString& page : pages) {
        QFile in(page);
        in.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        out.write(in.readAll());
    }
}

double peakMiB()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            double kib = 0;
            status >> kib;
            return kib / 1024;
        }
    }
    return 0;
}

/// What a fresh process of this program needs for the PDF: it is started with the pages and prints its peak.
double memoryOf(const QStringList& pages, const QString& path)
{
    QProcess fresh;
    fresh.start(QCoreApplication::applicationFilePath(), QStringList{path} + pages);
    fresh.waitForFinished(-1);
    return fresh.exitCode() == 0 ? fresh.readAllStandardOutput().toDouble() : 0;
}

void measureFile(const QString& folder)
{
    const QStringList pages = makePages(folder, pagesOfPdf);
    const QString pdf = folder + QStringLiteral("/made.pdf");
    double bytes = 0, largest = 0;
    for (const QString& page : pages) {
        bytes += double(QFileInfo(page).size());
        largest = std::max(largest, double(QFileInfo(page).size()));
    }
    constexpr double mib = 1024 * 1024;
    const double made = quickest(repetitions, [&] { makePdf(pages, pdf); });
    const double copied = quickest(repetitions, [&] { copyBytes(pages, folder + QStringLiteral("/copy")); });
    const double size = double(QFileInfo(pdf).size());
    print("PDF of 50 pages / its JPEG files, MiB", size / mib, bytes / mib, size / bytes, 1.01);
    print("PDF of 50 pages / bare copy of the bytes, ms", made, copied, made / copied, 3);
    const QString other = QStandardPaths::findExecutable(QStringLiteral("img2pdf"));
    if (!other.isEmpty()) {
        const double theirs = quickest(3, [&] {
            QProcess::execute(
                other, pages + QStringList{QStringLiteral("-o"), folder + QStringLiteral("/other.pdf")});
        });
        print("PDF of 50 pages / img2pdf, ms", made, theirs, made / theirs, 1);
    }
    const double limit = 3 * largest / mib + 50;
    const double memory = memoryOf(pages, pdf);
    print("PDF of 50 pages: peak memory / 3 pages + 50 MiB, MiB", memory, limit, memory / limit, 1);
}

/// The longest time between two beats of a timer: what the user waits for any answer of the window.
class Heartbeat
{
public:
    Heartbeat()
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] { beat(); });
        timer_.setTimerType(Qt::PreciseTimer);
        last_.start();
        timer_.start(1);
    }
    double longest() const { return longest_; } ///< milliseconds

private:
    void beat() { longest_ = std::max(longest_, double(last_.nsecsElapsed()) / 1e6), last_.start(); }

    QTimer timer_;
    QElapsedTimer last_;
    double longest_ = 0;
};

void runFor(int milliseconds)
{
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, milliseconds);
}

void measureDialog(const QString& folder)
{
    const QStringList pages = makePages(folder, pagesOfDialog);
    Dialogs::instance().chooseFiles = [&](QFileDialog&) { return pages; };
    QWidget window;
    window.resize(1600, 1000);
    MirvakCamera camera;
    const Heartbeat heart;
    PdfEx dialog(&window, camera);
    dialog.ShowPdf(&camera, 1600, 1200, 0, 0);
    runFor(100);
    const double opening = heart.longest();
    dialog.onAddImages();
    auto* bar = dialog.findChild<QListWidget*>()->verticalScrollBar();
    for (int i = 0; i < 300; ++i) { // while the pictures arrive
        bar->setValue(bar->maximum() * (i % 100) / 100);
        runFor(20);
    }
    print("dialog of 200 pages: longest wait, opening, ms", opening, 100, opening / 100, 1);
    print("dialog of 200 pages: longest wait, listing and scrolling, ms",
          heart.longest(),
          100,
          heart.longest() / 100,
          1);
    dialog.close();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1) { // the fresh process: PDF PAGES...
        QStringList pages;
        for (int i = 2; i < argc; ++i)
            pages << QString::fromUtf8(argv[i]);
        const int result = makePdf(pages, QString::fromUtf8(argv[1]));
        std::printf("%.1f\n", peakMiB());
        return result;
    }
    const QTemporaryDir home(QStringLiteral("/dev/shm/lumro-bench-XXXXXX"));
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    Q_INIT_RESOURCE(images);
    std::printf("\n%-58s %9s %9s %7s %8s\n", "PDF", "path", "limit", "ratio", "at most");
    measureFile(home.path());
    measureDialog(home.path());
    return 0;
}

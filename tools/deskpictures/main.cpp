// Makes the pictures that the virtual desk plays: pages drawn by this program, seen through a simulated
// camera.

#include "Output.h"
#include "Studio.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QThread>

#include <malloc.h>

#include <atomic>
#include <cstdio>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

using namespace deskpictures; // NOLINT(google-build-using-namespace): the program's own main file

namespace {

struct Order
{
    QString directory;
    std::vector<cv::Size> sizes;
    QStringList only;
    bool flat = false;
    int jobs = 1;

    bool wants(const char* name) const { return only.isEmpty() || only.contains(QLatin1String(name)); }
};

// Runs the jobs on a few threads. @return the first error's words, empty when all went well
std::string runAll(const std::vector<std::function<void()>>& jobs, int threads)
{
    std::atomic<size_t> next{0};
    std::mutex mutex;
    std::string error;
    const auto work = [&] {
        for (size_t i = next++; i < jobs.size(); i = next++) {
            try {
                jobs[i]();
            } catch (const std::exception& e) {
                const std::lock_guard lock(mutex);
                error = error.empty() ? e.what() : error;
                next = jobs.size();
            }
        }
    };
    // The toolkit's threads, because its font cache wants a timer in each of them.
    std::vector<std::unique_ptr<QThread>> others;
    for (int i = 1; i < threads; ++i) {
        others.emplace_back(QThread::create(work));
        others.back()->start();
    }
    work();
    for (const auto& thread : others)
        thread->wait();
    return error;
}

std::string make(const Order& order)
{
    const Studio studio(order.directory, order.sizes);
    std::vector<QByteArray> truth(catalogue().size());
    std::vector<std::function<void()>> jobs;
    // The longest job first, so that the threads end together.
    if (order.wants("page-turn"))
        jobs.emplace_back([&] { studio.takeFilm(); });
    if (order.wants("portrait"))
        jobs.emplace_back([&] { studio.takePortraits(); });
    for (size_t i = 0; i < catalogue().size(); ++i)
        if (order.wants(catalogue()[i].name))
            jobs.emplace_back([&, i] {
                truth[i] = studio.take(i);
                if (order.flat)
                    studio.takeFlat(i);
            });
    jobs.emplace_back([&] { studio.writeCompanions(); });
    std::string error = runAll(jobs, order.jobs);
    if (!error.empty())
        return error;
    QByteArray lines = Studio::truthHeader();
    for (const QByteArray& line : truth)
        lines += line;
    return runAll({[&] { writeText(order.directory + QStringLiteral("/truth.csv"), lines); }}, 1);
}

bool readSize(const QString& text, cv::Size& size)
{
    const QStringList parts = text.split(QLatin1Char('x'));
    size = parts.size() == 2 ? cv::Size(parts[0].toInt(), parts[1].toInt()) : cv::Size();
    return size.width >= 320 && size.width <= 8192 && size.width * 3 == size.height * 4;
}

} // namespace

int main(int argc, char* argv[])
{
    // Pictures come and go; handing their pages back to the system each time would cost a quarter of the run.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    qputenv("QT_QPA_PLATFORM", "offscreen"); // a build machine has no display
    const QTemporaryDir runtimeFolder;       // nor a session, which the toolkit would mention
    qputenv("XDG_RUNTIME_DIR", runtimeFolder.path().toUtf8());
    const QGuiApplication application(argc, argv);
    cv::setNumThreads(1);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Makes the pictures of the virtual desk."));
    parser.addHelpOption();
    const QCommandLineOption only(QStringLiteral("only"),
                                  QStringLiteral("Make only these, separated by commas."),
                                  QStringLiteral("names"));
    const QCommandLineOption flat(QStringLiteral("flat"),
                                  QStringLiteral("Write the flat pages as PNG, too."));
    const QCommandLineOption jobs(QStringLiteral("jobs"),
                                  QStringLiteral("Number of threads."),
                                  QStringLiteral("n"),
                                  QStringLiteral("2"));
    parser.addOptions({only, flat, jobs});
    parser.addPositionalArgument(QStringLiteral("directory"), QStringLiteral("Where the pictures go."));
    parser.addPositionalArgument(
        QStringLiteral("size"), QStringLiteral("WIDTHxHEIGHT, of shape 4:3."), QStringLiteral("size..."));
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() < 2)
        parser.showHelp(2);
    Order order;
    order.directory = arguments.first();
    order.flat = parser.isSet(flat);
    order.jobs = std::max(1, parser.value(jobs).toInt());
    order.only = parser.value(only).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& text : arguments.mid(1)) {
        order.sizes.emplace_back();
        if (!readSize(text, order.sizes.back())) {
            std::fprintf(stderr, "deskpictures: \"%s\" is not a size of shape 4:3\n", qPrintable(text));
            return 2;
        }
    }
    if (const QString font = missingFont(); !font.isEmpty()) {
        std::fprintf(stderr, "deskpictures: the font family %s is missing\n", qPrintable(font));
        return 1;
    }
    const std::string error = make(order);
    if (!error.empty())
        std::fprintf(stderr, "deskpictures: %s\n", error.c_str());
    return error.empty() ? 0 : 1;
}

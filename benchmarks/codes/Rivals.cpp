#include "Rivals.h"

#include "PayloadText.h"

#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>

#include <QByteArray>
#include <QProcess>
#include <QStandardPaths>

#include <cstdlib>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr char end = '\0'; // of one text

QByteArray asPgm(const cv::Mat& grey)
{
    QByteArray file =
        "P5\n" + QByteArray::number(grey.cols) + ' ' + QByteArray::number(grey.rows) + "\n255\n";
    for (int y = 0; y < grey.rows; ++y)
        file.append(reinterpret_cast<const char*>(grey.ptr(y)), grey.cols);
    return file;
}

// Never returns.
[[noreturn]] void readInChild(const cv::Mat& grey, int answers)
{
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    prctl(PR_SET_DUMPABLE, 0);
    close(STDERR_FILENO); // of failed assertions
    ZXing::DecodeHints hints;
    hints.setReturnCodabarStartEnd(true);
    std::string all;
    for (const ZXing::Result& result :
         ZXing::ReadBarcodes({grey.data, grey.cols, grey.rows, ZXing::ImageFormat::Lum}, hints)) {
        if (result.isValid())
            all += mirvak::payloadText(result.text(), true) + end;
    }
    const ssize_t written = write(answers, all.data(), all.size());
    _exit(written == static_cast<ssize_t>(all.size()) ? 0 : 1);
}

} // namespace

std::optional<std::vector<std::string>> readByZBar(const cv::Mat& grey)
{
    static const QString program = QStandardPaths::findExecutable(QStringLiteral("zbarimg"));
    if (program.isEmpty())
        return std::nullopt;
    QProcess process;
    process.start(program,
                  {QStringLiteral("--quiet"),
                   QStringLiteral("--raw"),
                   QStringLiteral("-Supca.enable"),
                   QStringLiteral("-Supce.enable"),
                   QStringLiteral("pgm:-")});
    process.write(asPgm(grey));
    process.closeWriteChannel();
    process.waitForFinished(-1);
    std::vector<std::string> texts;
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            texts.push_back(line.toStdString());
    }
    return texts;
}

std::vector<std::string> readByZXing(const cv::Mat& grey)
{
    int ends[2];
    if (pipe(ends) != 0)
        std::abort();
    const pid_t child = fork();
    if (child == 0)
        readInChild(grey, ends[1]);
    close(ends[1]);
    std::string all;
    char part[4096];
    for (ssize_t length = 0; (length = read(ends[0], part, sizeof part)) > 0;)
        all.append(part, static_cast<size_t>(length));
    close(ends[0]);
    waitpid(child, nullptr, 0);
    std::vector<std::string> texts;
    for (size_t at = 0, stop = 0; (stop = all.find(end, at)) != std::string::npos; at = stop + 1)
        texts.push_back(all.substr(at, stop - at));
    return texts;
}

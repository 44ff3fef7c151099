// Text recognition of the desk's text pages, as the program captures them (page cut out and straightened),
// beside the plain `tesseract` command: its errors on the frame as the camera delivers it, its time on the
// very picture that the library reads, with the same model.
#include "Codec.h"
#include "PlainText.h"
#include "RtfText.h"
#include "Unicode.h"
#include "mirvakcamera.h"
#include "mirvakocr.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int runs = 5;
constexpr int margin = 15, quality = 95; // as a capture of the program has them
constexpr double allowedTime = 1.15;

struct Page
{
    const char* name;
    const char* text;
    const char* model;
    double allowedErrors; // percent
};

constexpr Page pages[] = {{"03-english-text", "english", "eng", 1.0},
                          {"04-chinese-text", "chinese", "chi_sim", 1.0},
                          {"05-russian-text", "russian", "rus", 1.5}};

std::string contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

double errorsPercent(const Page& page, const std::u32string& read)
{
    const QString file = QStringLiteral(LUMRO_DESK_DIR "/texts/%1.txt").arg(QLatin1String(page.text));
    const std::u32string truth = plain(mirvak::fromUtf8(contentOf(file)));
    return 100.0 * static_cast<double>(editDistance(truth, plain(read))) / static_cast<double>(truth.size());
}

class Comparison
{
public:
    explicit Comparison(const Page& page) : page_(page)
    {
        frame_ = QStringLiteral(LUMRO_DESK_DIR "/pictures/3264x2448/%1.jpg").arg(QLatin1String(page.name));
    }

    bool run()
    {
        if (!capture())
            return false;
        double own = 1e9, command = 1e9;
        for (int i = 0; i < runs; ++i) { // in turns, so that both see the same load
            own = std::min(own, recognise());
            command = std::min(command, runCommand(picture()));
        }
        const double ownErrors = errorsPercent(page_, rtfText(contentOf(document())).value_or(U""));
        runCommand(frame_);
        const double plainErrors =
            errorsPercent(page_, mirvak::fromUtf8(contentOf(folder_.filePath(QStringLiteral("out.txt")))));
        print("characters wrong, percent / plain command on the frame",
              ownErrors,
              plainErrors,
              page_.allowedErrors);
        print("recognition ms / plain command on the same picture", own, command, allowedTime);
        return ownErrors <= plainErrors;
    }

private:
    QString picture() const { return folder_.filePath(QStringLiteral("page.jpg")); }
    QString document() const { return folder_.filePath(QStringLiteral("page.rtf")); }

    bool capture()
    {
        std::optional<mirvak::Image> image = mirvak::readImage(frame_.toStdString());
        MirvakCamera camera;
        if (!image || camera.MirvakImage_Deskew(&*image, margin) != MIRVAK_OK)
            return false;
        image->dpi = mirvak::cameraDpi;
        QFile::remove(picture()); // of the page before
        return camera.MirvakImage_Save(picture().toUtf8().constData(), &*image, quality, 3) == MIRVAK_OK;
    }

    double recognise() const
    {
        QFile::remove(document());
        QElapsedTimer clock;
        clock.start();
        MirvakOCR ocr;
        const bool done = ocr.MirvakOCR_Init(LUMRO_OCR_MODELS) == MIRVAK_OCR_OK &&
                          ocr.MirvakOCR_Discern(picture().toUtf8().constData()) == MIRVAK_OCR_OK &&
                          ocr.MirvakOCR_Save(document().toUtf8().constData()) == MIRVAK_OCR_OK;
        ocr.MirvakOCR_Deinit();
        return done ? static_cast<double>(clock.nsecsElapsed()) / 1e6 : 1e9;
    }

    double runCommand(const QString& input) const
    {
        QElapsedTimer clock;
        clock.start();
        QProcess process;
        process.start(QStringLiteral("tesseract"),
                      {input,
                       folder_.filePath(QStringLiteral("out")),
                       QStringLiteral("--tessdata-dir"),
                       QStringLiteral(LUMRO_OCR_MODELS),
                       QStringLiteral("-l"),
                       QLatin1String(page_.model)});
        const bool done = process.waitForFinished(300000) && process.exitCode() == 0;
        return done ? static_cast<double>(clock.nsecsElapsed()) / 1e6 : 1e9;
    }

    void print(const char* what, double own, double other, double allowed) const
    {
        const std::string title = std::string(page_.text) + ": " + what;
        const double ratio = other > 0 ? own / other : 0;
        std::printf("%-68s %9.2f %9.2f %7.2f %8.2f\n", title.c_str(), own, other, ratio, allowed);
    }

    const Page& page_;
    QString frame_;
    QTemporaryDir folder_;
};

} // namespace

int main()
{
    // Its threads make the command many times slower on a busy machine; it gets its best.
    qputenv("OMP_THREAD_LIMIT", "1");
    bool good = true;
    for (const Page& page : pages)
        good = Comparison(page).run() && good;
    return good ? 0 : 1;
}

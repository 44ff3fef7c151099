#include "Readers.h"

#include "Codec.h"
#include "PagePicture.h"
#include "RtfText.h"
#include "mirvakocr.h"

#include <QFile>
#include <QProcess>

#include <opencv2/imgproc.hpp>

#include <sys/resource.h>

namespace {

double secondsOf(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Answer readByLibrary(const QString& picture, const QString& document)
{
    QFile::remove(document);
    const double before = secondsOf(RUSAGE_SELF);
    MirvakOCR ocr;
    if (ocr.MirvakOCR_Init(LUMRO_OCR_MODELS) == MIRVAK_OCR_OK &&
        ocr.MirvakOCR_Discern(picture.toUtf8().constData()) == MIRVAK_OCR_OK)
        ocr.MirvakOCR_Save(document.toUtf8().constData());
    ocr.MirvakOCR_Deinit();
    const double seconds = secondsOf(RUSAGE_SELF) - before;
    const std::string rtf = contentOf(document).toStdString();
    return {QString::fromStdU32String(rtfText(rtf).value_or(U"")),
            seconds,
            QString::fromStdU32String(rtfHighlighted(rtf).value_or(U""))};
}

Answer readByCommand(const QString& picture, const char* model)
{
    const QString base = picture + QStringLiteral(".command"), time = base + QStringLiteral(".time");
    if (!QFile::exists(time)) {
        const double before = secondsOf(RUSAGE_CHILDREN);
        QProcess process;
        process.start(QStringLiteral("tesseract"),
                      {picture,
                       base,
                       QStringLiteral("--tessdata-dir"),
                       QStringLiteral(LUMRO_OCR_MODELS),
                       QStringLiteral("-l"),
                       QLatin1String(model)});
        process.waitForFinished(-1);
        QFile file(time);
        if (file.open(QIODevice::WriteOnly))
            file.write(QByteArray::number(secondsOf(RUSAGE_CHILDREN) - before));
    }
    return {QString::fromUtf8(contentOf(base + QStringLiteral(".txt"))), contentOf(time).toDouble(), {}};
}

void cleanPage(const QString& picture, const QString& cleaned)
{
    const auto page = mirvak::openPage(picture.toStdString());
    if (!page)
        return;
    mirvak::Image image;
    cv::cvtColor(page->grey, image.pixels, cv::COLOR_GRAY2RGB);
    image.dpi = page->dpi;
    QFile::remove(cleaned);
    mirvak::writeImage(cleaned.toStdString(), image, 95);
}

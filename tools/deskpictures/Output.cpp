#include "Output.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

namespace deskpictures {
namespace {

[[noreturn]] void fail(const QString& path, const QString& reason)
{
    throw OutputError(QStringLiteral("%1: %2").arg(path, reason).toStdString());
}

void open(QSaveFile& file)
{
    if (!QDir().mkpath(QFileInfo(file.fileName()).path()) || !file.open(QIODevice::WriteOnly))
        fail(file.fileName(), file.errorString());
}

void writeImage(const QString& path, const QImage& image, const char* format, int quality)
{
    QSaveFile file(path);
    open(file);
    QImageWriter writer(&file, format);
    writer.setQuality(quality);
    if (!writer.write(image))
        fail(path, writer.errorString());
    if (!file.commit())
        fail(path, file.errorString());
}

} // namespace

// Qt samples the colours at half the width and height, as cameras do.
void writeJpeg(const QString& path, const cv::Mat& rgb, int quality)
{
    writeImage(path,
               QImage(rgb.data, rgb.cols, rgb.rows, static_cast<int>(rgb.step), QImage::Format_RGB888),
               "jpeg",
               quality);
}

void writePng(const QString& path, const QImage& image)
{
    writeImage(path, image, "png", -1);
}

void writeText(const QString& path, const QByteArray& text)
{
    QSaveFile file(path);
    open(file);
    if (file.write(text) != text.size() || !file.commit())
        fail(path, file.errorString());
}

} // namespace deskpictures

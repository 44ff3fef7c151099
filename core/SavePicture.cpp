#include "SavePicture.h"

#include <QImage>
#include <QImageWriter>
#include <QSaveFile>

#include <cstdio>

namespace {

constexpr int dotsPerMetre = 8464;

} // namespace

bool savePicture(const QImage& picture, const QString& path)
{
    QImage copy = picture;
    copy.setDotsPerMeterX(dotsPerMetre);
    copy.setDotsPerMeterY(dotsPerMetre);
    QSaveFile file(path);
    const QByteArray format = path.section(QLatin1Char('.'), -1).toLatin1();
    if (file.open(QIODevice::WriteOnly) && QImageWriter(&file, format).write(copy) && file.commit())
        return true;
    std::fprintf(
        stderr, "capture: %s was not saved (%s)\n", qUtf8Printable(path), qUtf8Printable(file.errorString()));
    return false;
}

#include "SavePicture.h"

#include "AtomicFile.h"
#include "FileNaming.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include <cstdio>

namespace {

using mirvak::AtomicFile;

constexpr int dotsPerMetre = 8464;

AtomicFile::Commit write(const QByteArray& bytes, const QString& path)
{
    AtomicFile file(path.toStdString(), mirvak::IfTaken::refuse);
    file.write(bytes.constData(), static_cast<size_t>(bytes.size()));
    return file.commit();
}

} // namespace

QString savePicture(const QImage& picture, QString path, QByteArray format)
{
    QImage copy = picture;
    copy.setDotsPerMeterX(dotsPerMetre);
    copy.setDotsPerMeterY(dotsPerMetre);
    QBuffer coded;
    if (format.isEmpty())
        format = path.section(QLatin1Char('.'), -1).toLatin1();
    QImageWriter writer(&coded, format);
    const bool isCoded = writer.write(copy);
    if (isCoded && FileNaming::saveNew(path, AtomicFile::Commit::taken, [&](const QString& name) {
                       return write(coded.data(), name);
                   }) == AtomicFile::Commit::done)
        return path;
    std::fprintf(stderr,
                 "picture: %s was not saved%s\n",
                 qUtf8Printable(path),
                 isCoded ? "" : qUtf8Printable(QStringLiteral(": ") + writer.errorString()));
    return QString();
}

#include "PictureSheets.h"

#include "Job.h"
#include "PictureCoding.h"

#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <cstdio>

namespace {

using pictureSheets::End;
using pictureSheets::Result;

constexpr int dotsPerInch = 300;
constexpr int margin = 30; // points, the writer's own unit

/// Upright, as the camera that took it was held; null when it cannot be read.
QImage read(const QString& path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    QImage picture = reader.read();
    if (picture.isNull())
        std::fprintf(stderr, "PDF page: %s: %s\n", qPrintable(path), qPrintable(reader.errorString()));
    return picture;
}

void drawPage(QPainter& painter, const QRect& area, const QImage& picture)
{
    painter.setRenderHint(QPainter::LosslessImageRendering, !pictureCoding::survivesJpeg(picture));
    const QSize size = picture.size().scaled(area.size(), Qt::KeepAspectRatio);
    painter.setViewport(area.x(), area.y(), size.width(), size.height());
    painter.setWindow(picture.rect());
    painter.drawImage(0, 0, picture);
}

Result drawPages(QIODevice& file, const QStringList& pictures, Job& job)
{
    QPdfWriter writer(&file);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setResolution(dotsPerInch);
    writer.setPageMargins(QMarginsF(margin, margin, margin, margin));
    writer.setPageOrientation(QPageLayout::Landscape);
    QPainter painter(&writer);
    const QRect area = painter.viewport();
    for (int i = 0; i < pictures.size(); ++i) {
        job.reach(i, pictures.size());
        if (job.isStopped())
            return {End::stopped, i};
        const QImage picture = read(pictures[i]);
        if (picture.isNull())
            return {End::unreadable, i};
        if (i > 0)
            writer.newPage();
        drawPage(painter, area, picture);
    }
    job.reach(pictures.size(), pictures.size());
    return {job.isStopped() ? End::stopped : End::done, pictures.size()};
}

} // namespace

Result pictureSheets::write(const QString& path, const QStringList& pictures, Job& job)
{
    QSaveFile file(path);              // replaces a file of that name: the dialog has asked for that
    file.setDirectWriteFallback(true); // a folder without leave to write, a file with it
    Result result{End::notWritten, 0};
    if (file.open(QIODevice::WriteOnly)) {
        result = drawPages(file, pictures, job);
        if (result.end == End::stopped || (result.end == End::unreadable && result.pages == 0)) {
            file.cancelWriting();
            return result;
        }
        if (file.commit())
            return result;
    }
    std::fprintf(stderr, "PDF: %s: %s\n", qPrintable(path), qPrintable(file.errorString()));
    return {End::notWritten, 0};
}

Result pictureSheets::writeWith(MirvakCamera& camera,
                                const QString& path,
                                const QStringList& pictures,
                                const pdfFile::Form& form,
                                Job& job)
{
    const pdfFile::Result made = pdfFile::replace(camera, pictures, path, &job, form);
    if (made.code == MIRVAK_OK)
        return {End::done, int(pictures.size())};
    if (made.code == MIRVAK_STOPPED)
        return {End::stopped, 0};
    if (made.unreadable.isEmpty())
        return {End::notWritten, 0};
    const int readable = int(pictures.indexOf(made.unreadable.first()));
    if (readable == 0)
        return {End::unreadable, 0};
    const Result before = writeWith(camera, path, pictures.mid(0, readable), form, job);
    return before.end == End::done ? Result{End::unreadable, readable} : before;
}

#include "Studio.h"

#include "Output.h"
#include "camera/Book.h"
#include "camera/Sensor.h"
#include "film/TurnFilm.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace deskpictures {
namespace {

QString sizeName(cv::Size size)
{
    return QStringLiteral("%1x%2").arg(size.width).arg(size.height);
}

QByteArray number(double value)
{
    return QByteArray::number(value, 'f', 2);
}

QByteArray truthLine(const QString& stem,
                     cv::Size picturePx,
                     const std::array<cv::Point2d, 4>& corners,
                     cv::Size2d pageMm)
{
    QByteArray line = stem.toUtf8() + ',' + sizeName(picturePx).toUtf8();
    for (const cv::Point2d& corner : corners)
        line += ',' + number(corner.x) + ',' + number(corner.y);
    return line + ',' + number(pageMm.width) + ',' + number(pageMm.height) + '\n';
}

cv::Size2d sizeMm(const FlatPage& page)
{
    return {page.widthMm, page.heightMm};
}

} // namespace

Studio::Studio(QString directory, std::vector<cv::Size> sizes)
    : m_directory(std::move(directory)), m_sizes(std::move(sizes))
{
}

QByteArray Studio::truthHeader()
{
    return "name,size,tl_x,tl_y,tr_x,tr_y,br_x,br_y,bl_x,bl_y,width_mm,height_mm\n";
}

QString Studio::fileStem(size_t index)
{
    return QStringLiteral("%1-%2")
        .arg(index + 1, 2, 10, QLatin1Char('0'))
        .arg(QLatin1String(catalogue().at(index).name));
}

QString Studio::picturePath(cv::Size size, size_t index) const
{
    return QStringLiteral("%1/pictures/%2/%3.jpg").arg(m_directory, sizeName(size), fileStem(index));
}

QByteArray Studio::take(size_t index) const
{
    return catalogue().at(index).draw ? takeFlatPage(index) : takeBook(index);
}

QByteArray Studio::takeFlatPage(size_t index) const
{
    const Exhibit& exhibit = catalogue().at(index);
    const FlatPage page = exhibit.draw();
    QByteArray truth;
    for (const cv::Size size : m_sizes) {
        const View view(exhibit.scene.pose, sizeMm(page), size);
        const FlatLayer flat(page.image, sizeMm(page), view.pxPerMm());
        const Layer layer{flat.warp(view.pageToPicture(), size), {}};
        writeJpeg(picturePath(size, index), photograph(exhibit.scene, view, layer));
        truth += truthLine(fileStem(index), size, view.corners(sizeMm(page)), sizeMm(page));
    }
    return truth;
}

QByteArray Studio::takeBook(size_t index) const
{
    const Exhibit& exhibit = catalogue().at(index);
    const FlatPage left = drawBookLeft();
    const Book book(left.image, drawBookRight().image, sizeMm(left));
    QByteArray truth;
    QByteArray grid = "name,size,page,page_x_mm,page_y_mm,x,y\n";
    for (const cv::Size size : m_sizes) {
        const View view(exhibit.scene.pose, book.openMm(), size);
        writeJpeg(picturePath(size, index), photograph(exhibit.scene, view, book.see(view)));
        truth += truthLine(fileStem(index), size, book.corners(view), book.openMm());
        for (const Book::GridPoint& point : book.grid(view, 10))
            grid += fileStem(index).toUtf8() + ',' + sizeName(size).toUtf8() +
                    (point.right ? ",right," : ",left,") + number(point.pageMm.x) + ',' +
                    number(point.pageMm.y) + ',' + number(point.picturePx.x) + ',' +
                    number(point.picturePx.y) + '\n';
    }
    writeText(m_directory + QStringLiteral("/book.csv"), grid);
    return truth;
}

void Studio::takeFlat(size_t index) const
{
    const Exhibit& exhibit = catalogue().at(index);
    const QString path = QStringLiteral("%1/flat/%2").arg(m_directory, fileStem(index));
    if (exhibit.draw) {
        writePng(path + QStringLiteral(".png"), exhibit.draw().image);
    } else {
        writePng(path + QStringLiteral("-left.png"), drawBookLeft().image);
        writePng(path + QStringLiteral("-right.png"), drawBookRight().image);
    }
}

void Studio::takePortraits() const
{
    const cv::Size size(1280, 960);
    // The holder, with the noise of a weaker camera that looks into a room.
    const QImage person = drawPortrait(QSize(size.width, size.height), 1.22);
    const cv::Mat rgba(
        size, CV_8UC4, const_cast<uchar*>(person.constBits()), static_cast<size_t>(person.bytesPerLine()));
    cv::Mat colours;
    cv::cvtColor(rgba, colours, cv::COLOR_RGBA2RGB);
    const Light room;
    const cv::Mat energy = Sensor::expose(colours, lightMap(room, size, 201), {0.95, 0.93, 0.9}, 1.3);
    writeJpeg(m_directory + QStringLiteral("/portrait/01-holder.jpg"), Sensor(201).develop(energy));

    const FlatPage card = drawCardFront();
    Scene scene;
    scene.desk = Material::Grey;
    scene.pose.fill = 0.8;
    scene.pose.turnDegrees = -2;
    scene.pose.distanceMm = 200;
    scene.seed = 202;
    const View view(scene.pose, sizeMm(card), size);
    const FlatLayer flat(card.image, sizeMm(card), view.pxPerMm());
    writeJpeg(m_directory + QStringLiteral("/portrait/02-card.jpg"),
              photograph(scene, view, {flat.warp(view.pageToPicture(), size), {}}));
}

void Studio::takeFilm() const
{
    TurnFilm film;
    film.shoot(m_directory + QStringLiteral("/page-turn"));
    writeText(m_directory + QStringLiteral("/page-turn.csv"), film.truth());
}

void Studio::writeCompanions() const
{
    for (const char* name : {"english", "chinese", "russian", "letter", "book-left", "book-right"})
        writeText(QStringLiteral("%1/texts/%2.txt").arg(m_directory, QLatin1String(name)),
                  pageText(QLatin1String(name)).join(QLatin1Char('\n')).toUtf8() + '\n');
    std::vector<CodeTruth> codes;
    drawCodes(codes);
    QByteArray lines = "format,x_mm,y_mm,width_mm,height_mm,text\n";
    for (const CodeTruth& code : codes)
        lines += code.format.toUtf8() + ',' + number(code.placeMm.x()) + ',' + number(code.placeMm.y()) +
                 ',' + number(code.placeMm.width()) + ',' + number(code.placeMm.height()) + ',' +
                 code.text.toUtf8() + '\n';
    writeText(m_directory + QStringLiteral("/codes.csv"), lines);
}

} // namespace deskpictures

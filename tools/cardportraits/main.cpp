// Draws the portraits of the virtual desk's identity cards: people who do not exist, in the size that cards
// carry.
//   cardportraits FOLDER
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>

namespace {

struct Person
{
    const char* name;
    QColor skin, hair, clothes;
    qreal hairLength; ///< from the top of the head, in heights of the face
    bool hasGlasses;
};

constexpr QSize onTheCard(102, 126);
constexpr int finer = 4; // drawn larger, for soft edges
constexpr QRectF face(33, 28, 36, 48);

void drawHair(QPainter& painter, const Person& person)
{
    const QRectF hair = face.adjusted(-5, -8, 5, 0);
    QPainterPath path;
    path.addRoundedRect(
        QRectF(hair.topLeft(), QSizeF(hair.width(), face.height() * person.hairLength)), 22, 22);
    painter.fillPath(path, person.hair);
}

void drawBody(QPainter& painter, const Person& person)
{
    painter.setBrush(person.clothes);
    painter.drawEllipse(QRectF(8, 90, 86, 80));
    painter.setBrush(person.skin.darker(108));
    painter.drawRoundedRect(QRectF(43, 66, 16, 30), 7, 7);
}

void drawEyes(QPainter& painter, const Person& person)
{
    for (const qreal x : {42.5, 59.5}) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawEllipse(QPointF(x, 50), 4.2, 2.6);
        painter.setBrush(QColor(50, 35, 30));
        painter.drawEllipse(QPointF(x, 50), 2, 2.2);
        painter.setPen(QPen(person.hair, 1.6, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(x - 4.5, 44.5), QPointF(x + 4.5, 44));
        if (person.hasGlasses) {
            painter.setPen(QPen(QColor(40, 40, 48), 1.2));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(QRectF(x - 7, 45.5, 14, 10), 4, 4);
        }
    }
}

void drawFace(QPainter& painter, const Person& person)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(person.skin);
    for (const qreal x : {face.left(), face.right()})
        painter.drawEllipse(QPointF(x, 53), 3.5, 6);
    painter.drawEllipse(face);
    QPainterPath fringe;
    fringe.addEllipse(face);
    QPainterPath brow;
    brow.addEllipse(face.adjusted(-6, 13, 10, 20));
    painter.fillPath(fringe.subtracted(brow), person.hair);
    drawEyes(painter, person);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(person.skin.darker(135), 1.4, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(47, 52, 8, 8), 200 * 16, 140 * 16);
    painter.setPen(QPen(QColor(176, 84, 84), 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(43, 55, 16, 11), 215 * 16, 110 * 16);
}

QImage portrait(const Person& person)
{
    QImage image(onTheCard * finer, QImage::Format_RGB32);
    image.fill(QColor(236, 240, 244));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(finer, finer);
    painter.setPen(Qt::NoPen);
    drawHair(painter, person);
    drawBody(painter, person);
    drawFace(painter, person);
    painter.end();
    return image.scaled(onTheCard, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB888);
}

} // namespace

int main(int argc, char** argv)
{
    const Person people[] = {
        {"resident", {244, 208, 178}, {38, 28, 26}, {70, 92, 140}, 1.35, false},
        {"residence", {232, 190, 156}, {30, 26, 28}, {60, 66, 74}, 0.7, true},
        {"foreigner", {248, 216, 196}, {150, 98, 48}, {96, 60, 56}, 0.66, false},
        {"other", {226, 176, 140}, {84, 52, 34}, {52, 110, 96}, 1.2, true},
    };
    for (const Person& person : people) {
        const QString path =
            QStringLiteral("%1/%2.bmp")
                .arg(QString::fromLocal8Bit(argc == 2 ? argv[1] : "."), QLatin1String(person.name));
        if (!portrait(person).save(path)) {
            std::fprintf(stderr, "cannot write %s\n", qUtf8Printable(path));
            return 1;
        }
    }
    return 0;
}

// How the images look on a button: the styles name the plain path, and the toolkit must find the right
// density.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPushButton>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int naturalSide = 84; // logical px

QImage grabOnTeal(const char* styleSheet)
{
    QGuiApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QWidget window;
    window.setStyleSheet(QStringLiteral("QWidget{background-color: rgb(8, 115, 140);}"));
    auto* button = new QPushButton(&window);
    button->setStyleSheet(QLatin1String(styleSheet));
    window.resize(naturalSide, naturalSide);
    button->setGeometry(0, 0, naturalSide, naturalSide);
    return window.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QImage pictureOnTeal(const char* name)
{
    const int density = qRound(qGuiApp->devicePixelRatio());
    const QString suffix = density == 1 ? QString() : QStringLiteral("@%1x").arg(density);
    QImage picture(QStringLiteral(":/images/en/images/en/%1%2.png").arg(QLatin1String(name), suffix));
    picture.setDevicePixelRatio(1);
    QImage result(picture.size(), QImage::Format_RGB32);
    result.fill(QColor(8, 115, 140));
    QPainter(&result).drawImage(0, 0, picture);
    return result;
}

// Blending may round a channel differently by one.
int widestDifference(const QImage& a, const QImage& b)
{
    int widest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            widest = std::max({widest,
                               std::abs(qRed(p) - qRed(q)),
                               std::abs(qGreen(p) - qGreen(q)),
                               std::abs(qBlue(p) - qBlue(q))});
        }
    }
    return widest;
}

} // namespace

TEST(StyledButton, ShowsThePictureOfTheScreensDensityUnscaled)
{
    Q_INIT_RESOURCE(images);
    const QImage shown = grabOnTeal("QPushButton{border-radius: 5px;min-width:60px;min-height:60px;"
                                    "image: url(:/images/en/images/en/capture.png); }");
    const QImage expected = pictureOnTeal("capture");
    ASSERT_EQ(shown.size(), expected.size());
    EXPECT_LE(widestDifference(shown, expected), 2);
}

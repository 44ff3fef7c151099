#include "FaceVideo.h"

#include <gtest/gtest.h>

#include <QTest>

#include <thread>

namespace {

TEST(FaceVideo, ShowsThePictureInItsProportionsWithTheFaceFramed)
{
    FaceVideo video;
    video.resize(400, 200);
    video.show();
    const auto at = [&](int x, int y) { return video.grab().toImage().pixelColor(x, y); };
    EXPECT_EQ(at(200, 100), QColor(Qt::black));
    std::thread([&] { // as a camera does
        QImage picture(40, 40, QImage::Format_RGB888);
        picture.fill(Qt::red);
        video.SetImageData(picture);
        video.SetImageData(QImage());
    })
        .join();
    ASSERT_TRUE(QTest::qWaitFor([&] { return at(200, 100) == QColor(Qt::red); }));
    EXPECT_EQ(at(103, 3), QColor(Qt::red)); // 200 x 200 in the middle
    EXPECT_EQ(at(296, 196), QColor(Qt::red));
    EXPECT_EQ(at(96, 100), QColor(Qt::black));
    EXPECT_EQ(at(303, 100), QColor(Qt::black));

    video.setFaceFinder([] { return QRectF(10, 10, 20, 24); });
    for (const QPoint onFrame : {QPoint(150, 110), QPoint(250, 110), QPoint(200, 50), QPoint(200, 170)})
        EXPECT_GT(at(onFrame.x(), onFrame.y()).green(), 150) << onFrame.x() << ' ' << onFrame.y();
    EXPECT_EQ(at(200, 100), QColor(Qt::red));
    video.setFaceFinder([] { return QRectF(30, 10, 20, 24); }); // found half beyond the edge
    EXPECT_GT(at(200, 50).red() + at(275, 50).green(), 255 + 150);
    EXPECT_EQ(at(330, 50), QColor(Qt::black)) << "beyond the picture";
    QImage late(40, 40, QImage::Format_RGB888);
    late.fill(Qt::blue);
    video.SetImageData(late); // on its way
    video.clear();
    QCoreApplication::processEvents();
    EXPECT_EQ(at(110, 10), QColor(Qt::black));
    EXPECT_EQ(at(200, 100), QColor(Qt::black));
}

} // namespace

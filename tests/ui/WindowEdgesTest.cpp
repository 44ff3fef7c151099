#include "WindowEdges.h"

#include <gtest/gtest.h>

#include <QTest>

// Edges and corners are dragged by 30 px to the right and 20 down, then by far more than there is to give.
TEST(WindowEdges, AreDraggedUntilTheLeastSizeWhileTheOppositeOnesStand)
{
    struct Drag
    {
        QPoint grip;
        QRect place;
        QRect smallest; // dragged inwards beyond all measure
        Qt::CursorShape shape;
    };
    const QRect start(100, 80, 400, 300);
    const Drag drags[] = {
        {{1, 150}, {130, 80, 370, 300}, {380, 80, 120, 300}, Qt::SizeHorCursor},
        {{398, 150}, {100, 80, 430, 300}, {100, 80, 120, 300}, Qt::SizeHorCursor},
        {{200, 1}, {100, 100, 400, 280}, {100, 270, 400, 110}, Qt::SizeVerCursor},
        {{200, 298}, {100, 80, 400, 320}, {100, 80, 400, 110}, Qt::SizeVerCursor},
        {{1, 10}, {130, 100, 370, 280}, {380, 270, 120, 110}, Qt::SizeFDiagCursor},
        {{390, 1}, {100, 100, 430, 280}, {100, 270, 120, 110}, Qt::SizeBDiagCursor},
        {{10, 298}, {130, 80, 370, 320}, {380, 80, 120, 110}, Qt::SizeBDiagCursor},
        {{398, 290}, {100, 80, 430, 320}, {100, 80, 120, 110}, Qt::SizeFDiagCursor},
    };
    QWidget window(nullptr, Qt::Window | Qt::FramelessWindowHint);
    window.setMinimumSize(120, 110);
    new WindowEdges(window);
    (new QWidget(&window))->resize(2000, 2000); // made later, and still below the edges
    window.setGeometry(start);
    window.show();
    const auto dragged = [&](const QPoint& grip, const QPoint& by, Qt::MouseButton with = Qt::LeftButton) {
        window.setGeometry(start);
        QCoreApplication::processEvents();
        QTest::mouseMove(window.windowHandle(), grip);
        const Qt::CursorShape shape = window.childAt(grip)->cursor().shape();
        QTest::mousePress(window.windowHandle(), with, {}, grip);
        QTest::mouseMove(window.windowHandle(), grip + by);
        const QRect place = window.geometry();
        QTest::mouseRelease(window.windowHandle(), with, {}, start.topLeft() + grip + by - place.topLeft());
        QTest::mouseMove(window.windowHandle(), QPoint(60, 60)); // let go: follows no more
        EXPECT_EQ(window.geometry(), place);
        return std::pair(place, shape);
    };
    for (const Drag& drag : drags) {
        EXPECT_EQ(dragged(drag.grip, {30, 20}), std::pair(drag.place, drag.shape)) << drag.grip.x();
        const QPoint inwards(drag.grip.x() < 100 ? 900 : -900, drag.grip.y() < 100 ? 900 : -900);
        EXPECT_EQ(dragged(drag.grip, inwards).first, drag.smallest) << drag.grip.x();
    }
    EXPECT_EQ(dragged({1, 150}, {30, 20}, Qt::RightButton).first, start);
    window.showMaximized();
    QCoreApplication::processEvents();
    EXPECT_NE(window.childAt(1, 150)->width(), 5) << "no edges";
}

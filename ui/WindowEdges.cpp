#include "WindowEdges.h"

#include "SystemDrag.h"

#include <QEvent>
#include <QMouseEvent>
#include <QWidget>

#include <algorithm>

namespace {

constexpr int thickness = 5; // px; a scroll bar at the edge keeps most of its width
constexpr int corner = 24;   // px of each edge's ends that pull the neighbouring edge along

QRect stripOf(Qt::Edge edge, const QSize& window)
{
    switch (edge) {
    case Qt::TopEdge:
        return {0, 0, window.width(), thickness};
    case Qt::BottomEdge:
        return {0, window.height() - thickness, window.width(), thickness};
    case Qt::LeftEdge:
        return {0, 0, thickness, window.height()};
    case Qt::RightEdge:
        break;
    }
    return {window.width() - thickness, 0, thickness, window.height()};
}

/// What a press there takes hold of; `at` lies in the strip of `edge`.
Qt::Edges edgesAt(Qt::Edge edge, const QPoint& at, const QSize& window)
{
    Qt::Edges edges = edge;
    const bool isUpright = edge == Qt::LeftEdge || edge == Qt::RightEdge;
    const int along = isUpright ? at.y() : at.x();
    const int length = isUpright ? window.height() : window.width();
    if (along < corner)
        edges |= isUpright ? Qt::TopEdge : Qt::LeftEdge;
    else if (along >= length - corner)
        edges |= isUpright ? Qt::BottomEdge : Qt::RightEdge;
    return edges;
}

Qt::CursorShape shapeFor(Qt::Edges edges)
{
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge))
        return Qt::SizeBDiagCursor;
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

/// `place` with these edges moved; the others stand still, also when the least size is reached.
QRect pulled(QRect place, Qt::Edges edges, const QPoint& by, const QSize& least)
{
    if (edges & Qt::LeftEdge)
        place.setLeft(std::min(place.left() + by.x(), place.right() + 1 - least.width()));
    if (edges & Qt::RightEdge)
        place.setRight(std::max(place.right() + by.x(), place.left() - 1 + least.width()));
    if (edges & Qt::TopEdge)
        place.setTop(std::min(place.top() + by.y(), place.bottom() + 1 - least.height()));
    if (edges & Qt::BottomEdge)
        place.setBottom(std::max(place.bottom() + by.y(), place.top() - 1 + least.height()));
    return place;
}

} // namespace

/// The strip along one edge.
class WindowEdges::Grip : public QWidget
{
public:
    Grip(QWidget& window, Qt::Edge edge, const QString& name) : QWidget(&window), edge_(edge)
    {
        setObjectName(name);
        setMouseTracking(true);
    }

    void place() { setGeometry(stripOf(edge_, parentWidget()->size())); }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() != Qt::LeftButton)
            return;
        const Qt::Edges edges = edgesUnder(*event);
        if (systemDrag::resize(*parentWidget(), edges))
            return;
        pulled_ = edges;
        pressGlobal_ = event->globalPos();
        placeAtPress_ = parentWidget()->geometry();
    }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (!pulled_)
            setCursor(shapeFor(edgesUnder(*event)));
        else
            parentWidget()->setGeometry(
                pulled(placeAtPress_, pulled_, event->globalPos() - pressGlobal_, leastSize()));
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton)
            pulled_ = {};
    }

private:
    Qt::Edges edgesUnder(const QMouseEvent& event) const
    {
        return edgesAt(edge_, mapToParent(event.pos()), parentWidget()->size());
    }
    QSize leastSize() const
    {
        return parentWidget()->minimumSize().expandedTo(parentWidget()->minimumSizeHint());
    }

    const Qt::Edge edge_;
    Qt::Edges pulled_;
    QPoint pressGlobal_; // screen coordinates
    QRect placeAtPress_; // screen coordinates
};

WindowEdges::WindowEdges(QWidget& window) : QObject(&window), window_(window)
{
    grips_ = {new Grip(window, Qt::TopEdge, QStringLiteral("edgeTop")),
              new Grip(window, Qt::BottomEdge, QStringLiteral("edgeBottom")),
              new Grip(window, Qt::LeftEdge, QStringLiteral("edgeLeft")),
              new Grip(window, Qt::RightEdge, QStringLiteral("edgeRight"))};
    window.installEventFilter(this);
    update();
}

bool WindowEdges::eventFilter(QObject*, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::ChildAdded || type == QEvent::Resize || type == QEvent::WindowStateChange)
        update();
    return false;
}

void WindowEdges::update()
{
    const bool isFree = !(window_.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen));
    for (Grip* grip : grips_) {
        grip->place();
        grip->raise();
        grip->setVisible(isFree);
    }
}

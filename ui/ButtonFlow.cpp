#include "ButtonFlow.h"

#include <QWidget>

#include <algorithm>

ButtonFlow::ButtonFlow(QWidget* parent, int smallestCell, int largestCell)
    : QLayout(parent), smallestCell_(smallestCell), largestCell_(largestCell)
{
}

ButtonFlow::~ButtonFlow()
{
    qDeleteAll(items_);
}

void ButtonFlow::addItem(QLayoutItem* item)
{
    items_.append(item);
}

int ButtonFlow::count() const
{
    return items_.size();
}

QLayoutItem* ButtonFlow::itemAt(int index) const
{
    return items_.value(index);
}

QLayoutItem* ButtonFlow::takeAt(int index)
{
    return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

int ButtonFlow::shownCount() const
{
    return int(
        std::count_if(items_.begin(), items_.end(), [](QLayoutItem* item) { return !item->isEmpty(); }));
}

int ButtonFlow::extent(int cells, int cell) const
{
    return cells * cell + std::max(0, cells - 1) * spacing();
}

ButtonFlow::Grid ButtonFlow::gridFor(int width) const
{
    const QMargins margins = contentsMargins();
    const int room = std::max(0, width - margins.left() - margins.right());
    const int shown = std::max(1, shownCount());
    const int fitting = std::max(1, (room + spacing()) / (smallestCell_ + spacing()));
    Grid grid;
    grid.rows = (shown + fitting - 1) / fitting;
    grid.columns = (shown + grid.rows - 1) / grid.rows; // rows of like length instead of one button left over
    const int cell = (room - (grid.columns - 1) * spacing()) / grid.columns;
    grid.cell = std::clamp(cell, smallestCell_, largestCell_);
    return grid;
}

int ButtonFlow::heightForWidth(int width) const
{
    const Grid grid = gridFor(width);
    const QMargins margins = contentsMargins();
    return extent(grid.rows, grid.cell) + margins.top() + margins.bottom();
}

QSize ButtonFlow::sizeHint() const
{
    const QMargins margins = contentsMargins();
    return QSize(extent(std::max(1, shownCount()), smallestCell_) + margins.left() + margins.right(),
                 smallestCell_ + margins.top() + margins.bottom());
}

QSize ButtonFlow::minimumSize() const
{
    const QMargins margins = contentsMargins();
    return QSize(smallestCell_ + margins.left() + margins.right(),
                 smallestCell_ + margins.top() + margins.bottom());
}

void ButtonFlow::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const Grid grid = gridFor(rect.width());
    const QRect inside = rect.marginsRemoved(contentsMargins());
    const int left = inside.left() + std::max(0, inside.width() - extent(grid.columns, grid.cell)) / 2;
    const int top = inside.top() + std::max(0, inside.height() - extent(grid.rows, grid.cell)) / 2;
    int placed = 0;
    for (QLayoutItem* item : items_) {
        if (item->isEmpty())
            continue;
        const int step = grid.cell + spacing();
        item->setGeometry(QRect(
            left + placed % grid.columns * step, top + placed / grid.columns * step, grid.cell, grid.cell));
        ++placed;
    }
}

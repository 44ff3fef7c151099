#pragma once

#include <QLayout>
#include <QVector>

/// Lays out large square buttons from left to right, in rows of equal length where one row is too narrow.
/// Cells grow with the room they have, up to `largestCell`. Hidden buttons take no room.
class ButtonFlow : public QLayout
{
public:
    ButtonFlow(QWidget* parent, int smallestCell, int largestCell); ///< px, square
    ~ButtonFlow() override;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;    ///< all in one row
    QSize minimumSize() const override; ///< a single cell
    void setGeometry(const QRect& rect) override;

private:
    struct Grid
    {
        int columns = 1;
        int rows = 1;
        int cell = 0; ///< px
    };
    int shownCount() const;
    Grid gridFor(int width) const;
    int extent(int cells, int cell) const;

    QVector<QLayoutItem*> items_;
    int smallestCell_;
    int largestCell_;
};

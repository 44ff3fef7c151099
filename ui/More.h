#pragma once

#include <QVector>
#include <QWidget>

#include <memory>

class QCheckBox;
class TitleBar;
class Ui_More;

/// The window in which the user ticks the function buttons to be shown. GUI thread only.
class More : public QWidget
{
    Q_OBJECT

public:
    explicit More(QWidget* parent = nullptr);
    ~More() override;

Q_SIGNALS:
    void displayCheckBox(int index, bool checked); ///< a box was clicked
    void displayCheckBox(int index, int state);    ///< a box changed; a Qt::CheckState

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void makeTitleBar();
    void prepareBox(int index);
    void captionBoxes();

    std::unique_ptr<Ui_More> ui_;
    TitleBar* titleBar_ = nullptr;
    QVector<QCheckBox*> boxes_; ///< by bit of the mask
};

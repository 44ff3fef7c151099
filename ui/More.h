#pragma once

#include <QVector>
#include <QWidget>

#include <memory>

class QCheckBox;
class QLabel;
class TitleBar;
class Ui_More;

/// The window in which the user ticks the function buttons to be shown. The contents are made when it is
/// first shown, so that the start of the program does not wait for them, and kept. GUI thread only.
class More : public QWidget
{
    Q_OBJECT

public:
    explicit More(QWidget* parent = nullptr);
    ~More() override;

    void setVisible(bool visible) override;

Q_SIGNALS:
    void displayCheckBox(int index, bool checked); ///< a box was clicked
    void displayCheckBox(int index, int state);    ///< a box changed; a Qt::CheckState

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void build();
    void makeTitleBar();
    void prepareBox(int index);
    void captionBoxes();
    void arrange();

    /// The pictures' own captions are Chinese. As at the start: a language chosen since waits for the next
    /// one.
    const bool readsPictures_;
    std::unique_ptr<Ui_More> ui_; ///< null until first shown
    TitleBar* titleBar_ = nullptr;
    QVector<QCheckBox*> boxes_; ///< by bit of the mask
    QVector<QLabel*> labels_;   ///< the same
    int columns_ = 0;
};

#pragma once

#include "ControlLink.h"

#include <QWidget>

class ControlRow;
class QLabel;
class QPushButton;
class QVBoxLayout;

/// The controls of the camera over the edge of the preview; it scrolls where it is too tall. What the user
/// changes is told at once, what the camera says is shown by showControls(). GUI thread only.
class ControlPanel : public QWidget
{
    Q_OBJECT

public:
    static constexpr int fullWidth = 300; ///< px

    explicit ControlPanel(QWidget* view);

    void showControls(const ControlList& controls, bool isCameraOpen);
    /// The Tab key comes here after `before`, and goes through the panel from top to bottom.
    void followInTabOrder(QWidget* before);
    /// Its uppermost control gets the keyboard.
    void takeKeyboard();
    QSize sizeHint() const override;

Q_SIGNALS:
    void changed(int control, int value);
    void resetAll();
    void closeWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeHead();
    QWidget* makeRows();
    QWidget* makeFoot();

    struct Line
    {
        int automatic, control; // MirvakControl; -1 for none
        ControlRow* row;
    };
    QVector<Line> lines_;
    QLabel* note_ = nullptr;
    QPushButton* close_ = nullptr;
    QPushButton* asDelivered_ = nullptr;
    QWidget* rows_ = nullptr;
    QWidget* head_ = nullptr;
    QWidget* foot_ = nullptr;
};

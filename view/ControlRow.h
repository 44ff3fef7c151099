#pragma once

#include "ControlScale.h"

#include <QWidget>

class ControlSlider;
class QCheckBox;
class QComboBox;
class QLabel;

/// One line of the panel: a control with its name, its value and, where the camera has it, its automatic.
/// GUI thread only.
class ControlRow : public QWidget
{
    Q_OBJECT

public:
    /// `key` is part of the names of the widgets: "sliderFocus", "checkFocus".
    ControlRow(const QString& key, const QString& name, QWidget* parent);

    /// What the camera says; null for what it does not offer. With neither the row hides.
    void show(const MirvakControlInfo* automatic, const MirvakControlInfo* control);

Q_SIGNALS:
    void changed(int control, int value);

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void showSlider();
    void showEntries();
    void choose(int position);
    void reset();
    QString textOf(int value) const;

    QLabel* name_;
    QLabel* value_;
    QCheckBox* automatic_;
    ControlSlider* slider_;
    QComboBox* entries_;
    MirvakControlInfo control_{};
    MirvakControlInfo switch_{};
    bool hasControl_ = false;
    bool hasSwitch_ = false;
    ControlScale scale_;
};

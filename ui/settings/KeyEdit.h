#pragma once

#include <QLineEdit>

/// Shows a key combination as it stands in the settings ("Ctrl+Shift+S") and records the one that is pressed
/// in it. Backspace and Delete alone clear it; Tab and Escape keep their meaning in the dialog. A read-only
/// one records nothing. GUI thread only.
class KeyEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit KeyEdit(QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool records(const QKeyEvent& event) const;
};

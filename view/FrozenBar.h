#pragma once

#include <QWidget>

class QPushButton;

/// Stands in the preview while its picture is frozen: says that a capture saves the live page, and offers to
/// save the one that is shown. GUI thread only.
class FrozenBar : public QWidget
{
    Q_OBJECT

public:
    /// `view` is the preview. It starts hidden.
    explicit FrozenBar(QWidget& view);

    /// Whether the shown picture is there to be saved.
    void offerSaving(bool offered);

Q_SIGNALS:
    void saveClicked();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPushButton* save_;
};

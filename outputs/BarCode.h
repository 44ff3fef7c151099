#pragma once

#include <QWidget>

#include <memory>

class Ui_BarCode;

/// Shows what codes say, in a field that may be edited and copied. Has no parent, stays on top and keeps its
/// size; closing hides it. GUI thread only.
class BarCode : public QWidget
{
    Q_OBJECT

public:
    BarCode();
    ~BarCode() override;

    /// Replaces what stands in the field.
    void SetCodeData(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void copy();

    std::unique_ptr<Ui_BarCode> ui_;
};

#pragma once

#include <QDialog>

#include <memory>

class Ui_MsgBox;

/// The application's own message dialog. Fill it by one of its operations, then run it with exec():
/// Accepted for "OK", Rejected for "Cancel", Escape and every other way of closing. GUI thread only.
class MsgBox : public QDialog
{
    Q_OBJECT

public:
    explicit MsgBox(QWidget* parent = nullptr);
    ~MsgBox() override;

    void Warnning(const QString& text);
    void Error(const QString& text);
    /// An empty title or text is replaced by the caption of a warning.
    void Information(const QString& title, const QString& text);
    /// With "OK" and "Cancel".
    void Question(const QString& text);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void fill(const QString& title, const QString& text);
    void fitMessage();

    std::unique_ptr<Ui_MsgBox> ui_;
};

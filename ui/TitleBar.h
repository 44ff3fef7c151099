#pragma once

#include <QPoint>
#include <QWidget>

#include <memory>

class QIcon;
class Ui_TitleBar;

/// The caption strip of every frameless window: icon, title, skin, minimise, maximise and close buttons. It
/// acts on the window that it lies in. GUI thread only.
class TitleBar : public QWidget
{
    Q_OBJECT

public:
    explicit TitleBar(QWidget* parent = nullptr);
    ~TitleBar() override;

    void SetTitle(const QString& title);
    void SetIcon(const QIcon& icon);
    void ShowSkinButton(bool show);
    void ShowMinimizeButton(bool show);
    void ShowMaximizeButton(bool show);
    void ShowCloseButton(bool show);
    /// Allows or forbids dragging the window by the bar. Allowed at first.
    void EnableWindowMove(bool enable);

Q_SIGNALS:
    /// The close button was pressed; the owning window decides what closing means.
    void clickedclosesign();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Maximises and restores where the button for it is shown.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private Q_SLOTS:
    void onBtnClicked();

private:
    void toggleMaximized();
    void showMaximizedState();
    void leaveFirstFocus();

    std::unique_ptr<Ui_TitleBar> ui_;
    bool moveEnabled_ = true;
    bool pressed_ = false;
    QPoint pressGlobal_;      ///< screen coordinates
    QPoint windowPosAtPress_; ///< screen coordinates
};

#include "DialogFrame.h"

#include "Look.h"
#include "TitleBar.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QLayout>
#include <QPainter>
#include <QWindow>

namespace {

/// Draws the frame's edge where a dialog paints nothing but its ground.
class Edge : public QObject
{
public:
    explicit Edge(QDialog& dialog) : QObject(&dialog), dialog_(dialog) { dialog.installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            QPainter painter(&dialog_);
            painter.setPen(Look::strip);
            painter.drawRect(dialog_.rect().adjusted(0, 0, -1, -1));
        }
        return false;
    }

private:
    QDialog& dialog_;
};

TitleBar* addTitleBar(QDialog& dialog)
{
    auto* bar = new TitleBar(&dialog);
    bar->SetTitle(dialog.windowTitle());
    bar->ShowSkinButton(false);
    bar->ShowMinimizeButton(false);
    bar->ShowMaximizeButton(false);
    QObject::connect(&dialog, &QWidget::windowTitleChanged, bar, &TitleBar::SetTitle);
    QObject::connect(bar, &TitleBar::clickedclosesign, &dialog, &QWidget::close);
    return bar;
}

} // namespace

void DialogFrame::dress(QDialog& dialog)
{
    QWindow* handle = dialog.windowHandle();
    if (dialog.windowFlags() & Qt::FramelessWindowHint || !dialog.layout() || !handle)
        return;
    // Of the native window: the dialog itself would have to be made anew.
    handle->setFlag(Qt::FramelessWindowHint);
    if (dialog.layout()->menuBar())
        return;
    Look::dress(dialog);
    for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
        if (qobject_cast<QDialogButtonBox*>(button->parentWidget()))
            button->setIcon({});                      // the other windows' have none
    dialog.layout()->setMenuBar(addTitleBar(dialog)); // which lies above the contents, without their margin
    new Edge(dialog);
}

#include "ScrolledWindow.h"

#include "TitleBar.h"

#include <QLayout>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

/// Out of the layout that holds it, which may lie in `outermost`.
QWidget* take(QWidget* part, QLayout& outermost)
{
    if (!part)
        return nullptr;
    if (outermost.menuBar() == part)
        outermost.setMenuBar(nullptr);
    outermost.removeWidget(part);
    for (QLayout* inner : outermost.findChildren<QLayout*>())
        inner->removeWidget(part);
    return part;
}

} // namespace

void ScrolledWindow::make(QWidget& window, const QSize& room)
{
    QLayout* layout = window.layout();
    if (!layout)
        return;
    window.setMinimumSize(0, 0);
    window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QWidget* bar = window.findChild<TitleBar*>();
    if (bar && bar->parentWidget() != &window)
        bar = bar->parentWidget(); // the place that a form reserves for it
    take(bar, *layout);
    auto* foot = window.findChild<QWidget*>(QStringLiteral("frameFoot"));
    foot = foot && foot->minimumSizeHint().width() < room.width() ? take(foot, *layout) : nullptr;
    auto* contents = new QWidget(&window); // without a parent the layout would hold it at its present size
    contents->setObjectName(QStringLiteral("scrolledContents"));
    contents->setLayout(layout);
    auto* area = new QScrollArea(&window);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(contents);
    // The ground is the window's, not that of a list.
    area->viewport()->setAutoFillBackground(false);
    contents->setAutoFillBackground(false);
    auto* outer = new QVBoxLayout(&window);
    outer->setContentsMargins(1, 1, 1, 1);
    outer->setSpacing(0);
    for (QWidget* part : {bar, static_cast<QWidget*>(area), foot})
        if (part) {
            outer->addWidget(part);
            part->show(); // now, and not when the window has shown its parts already
        }
}

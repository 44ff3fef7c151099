#include "WindowCare.h"

#include "ComeForward.h"
#include "DialogFrame.h"
#include "Dialogs.h"
#include "ScrolledWindow.h"
#include "TitleBar.h"
#include "UnsavedWork.h"
#include "WindowPlace.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QWindow>

namespace {

bool isEscape(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_Escape && !key.isAutoRepeat();
}

bool hasCloseButton(const QWidget& window)
{
    const auto* bar = window.findChild<TitleBar*>();
    return bar && bar->window() == &window;
}

bool fits(const QSize& size, const QRect& area)
{
    return size.width() <= area.width() && size.height() <= area.height();
}

/// The screen on which the middle of the window lies.
const QScreen* screenOf(const QWidget& window, const QWidget& owner)
{
    const QScreen* screen = QGuiApplication::screenAt(window.geometry().center());
    return screen ? screen : owner.screen();
}

} // namespace

WindowCare::WindowCare(QWidget& main)
    : QObject(&main), main_(main), freeArea_([](const QScreen& screen) { return screen.availableGeometry(); })
{
    qApp->installEventFilter(this);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &WindowCare::passKeysOn);
}

bool WindowCare::caresFor(const QWidget& window) const
{
    const Qt::WindowType type = window.windowType();
    const bool isFull = window.windowState() & Qt::WindowFullScreen;
    return (type == Qt::Window || type == Qt::Dialog) && &window != &main_ && !isFull && main_.windowHandle();
}

bool WindowCare::eventFilter(QObject* watched, QEvent* event)
{
    if (!watched->isWidgetType())
        return false;
    auto& window = static_cast<QWidget&>(*watched);
    if (&window == &main_ && event->type() == QEvent::WindowStateChange)
        takeAlong();
    if (event->type() == QEvent::Show && !event->spontaneous() && !isShowing_ && caresFor(window)) {
        show(window, event);
        return true;
    }
    // One that has grown by itself, as its text came.
    if (event->type() == QEvent::Resize && !event->spontaneous() && window.isWindow() && window.isVisible() &&
        !isShowing_ && caresFor(window))
        keepInside(window);
    // It gets here when no part of the window has a use for it. Dialogs of the toolkit's kind see to it
    // themselves.
    if (isEscape(*event) && window.isWindow() && caresFor(window) && !qobject_cast<QDialog*>(&window) &&
        hasCloseButton(window)) {
        closeByKey(window);
        return true;
    }
    return false;
}

/// Between the moment in which the window finds its place and that in which the desktop gets to see it.
void WindowCare::show(QWidget& window, QEvent* event)
{
    if (auto* dialog = qobject_cast<QDialog*>(&window))
        DialogFrame::dress(*dialog);
    tie(window);
    {
        const QScopedValueRollback<bool> passedOn(isShowing_, true);
        QCoreApplication::sendEvent(&window, event);
    }
    if (!window.isMaximized())
        fit(window);
}

void WindowCare::tie(QWidget& window) const
{
    QWindow* handle = window.windowHandle();
    QWindow* owner = ownerOf(window).windowHandle();
    if (!handle || !owner)
        return;
    // Of the kinds that our windows are of, the toolkit tells an X server the owner of dialogs alone.
    if (handle->type() == Qt::Window)
        handle->setFlags((handle->flags() & ~Qt::WindowType_Mask) | Qt::Dialog);
    // What has no parent blocks nobody; the owner must not change that.
    if (!window.parentWidget() && handle->modality() == Qt::WindowModal)
        handle->setModality(Qt::NonModal);
    handle->setTransientParent(owner);
}

QWidget& WindowCare::ownerOf(const QWidget& window) const
{
    const QWidget* parent = window.parentWidget();
    QWidget* owner = parent ? parent->window() : QApplication::activeModalWidget();
    if (owner && owner != &window && owner != &main_ && owner->isVisible())
        return *owner;
    for (QWidget* other : QApplication::topLevelWidgets())
        if (other != &window && other->isVisible() && other->isFullScreen() && other->windowHandle())
            return *other; // it covers the main window
    return main_;
}

void WindowCare::fit(QWidget& window) const
{
    const QWidget& owner = ownerOf(window);
    if (!window.testAttribute(Qt::WA_Moved))
        window.move(owner.geometry().center() - window.rect().center());
    const QRect area = freeArea_(*screenOf(window, owner));
    const bool isFixed = window.minimumSize() == window.maximumSize();
    if (!fits(window.minimumSizeHint(), area))
        ScrolledWindow::make(window, area.size());
    const QRect place = windowPlace::inside(window.geometry(), area);
    if (isFixed)
        window.setFixedSize(place.size());
    else if (!fits(window.minimumSize(), area))
        window.setMinimumSize(window.minimumSize().boundedTo(area.size()));
    if (place != window.geometry())
        window.setGeometry(place);
}

/// Some window managers leave behind what stays on top.
void WindowCare::takeAlong() const
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowFlags() & Qt::WindowStaysOnTopHint && caresFor(*window)) {
            const Qt::WindowStates others = window->windowState() & ~Qt::WindowMinimized;
            window->setWindowState(others | (main_.windowState() & Qt::WindowMinimized));
        }
}

/// Where the window manager gives the keys to the main window though a dialog blocks it, nobody would get
/// them: the toolkit passes them on only to a dialog that blocks the whole program.
void WindowCare::passKeysOn(const QWindow* focused) const
{
    QWidget* dialog = QApplication::activeModalWidget();
    if (focused && focused == main_.windowHandle() && dialog && dialog->isVisible())
        comeForward(*dialog);
}

void WindowCare::keepInside(QWidget& window) const
{
    const QRect area = freeArea_(*screenOf(window, main_));
    const QRect place = windowPlace::inside(window.geometry(), area);
    if (place != window.geometry())
        window.setGeometry(place);
}

void WindowCare::closeByKey(QWidget& window) const
{
    const auto* work = dynamic_cast<const UnsavedWork*>(&window);
    const QString question = work ? work->questionBeforeClosing() : QString();
    if (question.isEmpty() || Dialogs::confirm(&window, question))
        window.close();
}

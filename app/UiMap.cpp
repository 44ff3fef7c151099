#include "UiMap.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFile>
#include <QMenu>
#include <QTextStream>

#include <cstdio>

namespace {

/// Its own name, or for the list of an open chooser that of the chooser; empty for the toolkit's inner parts.
QString nameOf(const QWidget& widget)
{
    QString name = widget.objectName();
    if (qobject_cast<const QAbstractItemView*>(&widget)) {
        for (const QWidget* parent = widget.parentWidget(); parent; parent = parent->parentWidget())
            if (const auto* chooser = qobject_cast<const QComboBox*>(parent))
                name = chooser->objectName();
        if (name.isEmpty())
            name = QString::fromLatin1(widget.metaObject()->className());
    }
    if (name.isEmpty() && qobject_cast<const QMenu*>(&widget))
        return QStringLiteral("menu");
    if (name.startsWith(QLatin1String("qt_")))
        return {};
    return name.replace(QLatin1Char(' '), QLatin1Char('_'));
}

void line(QTextStream& out, const QString& name, const QWidget& widget, const QRect& rect, bool isEnabled)
{
    const qreal scale = widget.devicePixelRatioF(); // one screen, its corner at 0
    const QPoint corner = widget.mapToGlobal(rect.topLeft()) * scale;
    const QSize size = rect.size() * scale;
    const QString window = nameOf(*widget.window());
    out << name << ' ' << corner.x() << ' ' << corner.y() << ' ' << size.width() << ' ' << size.height()
        << ' ' << (window.isEmpty() ? QStringLiteral("-") : window) << ' ' << int(isEnabled) << '\n';
}

/// The part of it that is not cut off by what it lies in, in its own coordinates.
QRect shownPart(const QWidget& widget)
{
    QRect part = widget.rect();
    QPoint corner; // of the widget, in the one looked at
    for (const QWidget* in = &widget; !in->isWindow(); in = in->parentWidget()) {
        corner += in->pos();
        part &= in->parentWidget()->rect().translated(-corner);
    }
    return part;
}

void rows(QTextStream& out, const QString& name, const QAbstractItemView& view)
{
    const QWidget& viewport = *view.viewport();
    for (int row = 0; view.model() && row < view.model()->rowCount(view.rootIndex()); ++row) {
        const QRect rect = view.visualRect(view.model()->index(row, 0, view.rootIndex()));
        if (viewport.rect().contains(rect.center()))
            line(out, QStringLiteral("%1.%2").arg(name).arg(row), viewport, rect, view.isEnabled());
    }
}

void entries(QTextStream& out, const QString& name, const QMenu& menu)
{
    int number = 0;
    for (QAction* action : menu.actions())
        if (!action->isSeparator())
            line(out,
                 QStringLiteral("%1.%2").arg(name).arg(number++),
                 menu,
                 menu.actionGeometry(action),
                 action->isEnabled());
}

bool canMoveThings(QEvent::Type type)
{
    switch (type) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::LayoutRequest:
    case QEvent::EnabledChange:
    case QEvent::ChildAdded:
    case QEvent::Paint:
        return true; // a list that has got another row says no more than this
    default:
        return false;
    }
}

} // namespace

void UiMap::startIfWanted(QApplication& application)
{
    const QString path = qEnvironmentVariable("LUMRO_UI_MAP");
    if (!path.isEmpty())
        new UiMap(path, application); // owned by the application
}

UiMap::UiMap(const QString& path, QApplication& application) : QObject(&application), path_(path)
{
    timer_.setSingleShot(true);
    timer_.setInterval(100);
    connect(&timer_, &QTimer::timeout, this, &UiMap::write);
    application.installEventFilter(this);
}

bool UiMap::eventFilter(QObject* watched, QEvent* event)
{
    if (!timer_.isActive() && watched->isWidgetType() && canMoveThings(event->type()))
        timer_.start();
    return false;
}

void UiMap::describe(QTextStream& out, const QWidget& widget)
{
    const QString name = nameOf(widget);
    const QRect part = shownPart(widget);
    if (name.isEmpty() || part.isEmpty())
        return;
    line(out, name, widget, part, widget.isEnabled());
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget))
        rows(out, name, *view);
    else if (const auto* menu = qobject_cast<const QMenu*>(&widget))
        entries(out, name, *menu);
}

// Renamed into place and not synced: on a busy disk that would hold the window up, and the map would be late.
void UiMap::write()
{
    QFile file(path_ + QStringLiteral(".new"));
    bool isWritten = file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    if (isWritten) {
        QTextStream out(&file);
        out.setCodec("UTF-8");
        for (const QWidget* widget : QApplication::allWidgets())
            if (widget->isVisible())
                describe(out, *widget);
        out.flush();
        file.close();
        isWritten = file.error() == QFileDevice::NoError &&
                    std::rename(QFile::encodeName(file.fileName()).constData(),
                                QFile::encodeName(path_).constData()) == 0;
    }
    if (!isWritten)
        std::fprintf(stderr, "%s: %s\n", qPrintable(path_), qPrintable(file.errorString()));
}

#pragma once

#include <QObject>
#include <QVector>

class QShortcut;
class QWidget;

/// The capture keys of the settings, alive in one window. A text that names no combination binds nothing; of
/// two that collide the first one counts (capture, document, book), the settings page marks the other. A key
/// that is held down counts once. GUI thread only.
class Shortcuts : public QObject
{
    Q_OBJECT

public:
    /// The keys work while the window in which `host` lies just then is the active one, and so neither in
    /// dialogs nor while one blocks that window. With the preview as host they go along into the full screen.
    explicit Shortcuts(QWidget& host);

public Q_SLOTS:
    /// Takes the stored combinations, from now on.
    void rebind();

Q_SIGNALS:
    void scannerPressed();
    void documentPressed();
    void bookPressed();

private:
    QVector<QShortcut*> shortcuts_; ///< children of the host; capture, document, book
};

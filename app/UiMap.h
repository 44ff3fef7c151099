#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class QApplication;
class QTextStream;
class QWidget;

/// For scripts that work the program by real clicks: keeps a text file that says where every named widget is.
/// One line a widget that can be seen: name, left, top, width, height of the part that shows (pixels of the
/// screen), the name of its window, and 1 or 0 for enabled or not, with a blank between. Rows of lists and
/// entries of menus follow as name.0, name.1 and so on; the list of an open chooser carries the chooser's
/// name. GUI thread only.
class UiMap : public QObject
{
    Q_OBJECT

public:
    /// Starts one that lives as long as the application when the variable LUMRO_UI_MAP names a file.
    static void startIfWanted(QApplication& application);

    UiMap(const QString& path, QApplication& application);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void write();
    static void describe(QTextStream& out, const QWidget& widget);

    QString path_;
    QTimer timer_; // many events, one file
};

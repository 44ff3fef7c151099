#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <functional>

class MsgBox;
class QDrag;
class QFileDialog;
class QInputDialog;
class QPrinter;
class QUrl;
class QWidget;

/// Everything that stops the program for an answer or leaves it for another one. Features call these members,
/// so that a test can put its own answers in their place. GUI thread only.
struct Dialogs
{
    /// Runs the filled box modally. @return QDialog::Accepted or QDialog::Rejected
    std::function<int(MsgBox& box)> runMessage;
    /// The toolkit's information box.
    std::function<QMessageBox::StandardButton(
        QWidget* parent, const QString& title, const QString& text, QMessageBox::StandardButtons buttons)>
        information;
    /// Runs the prepared box modally. @return the standard button that was pressed
    std::function<QMessageBox::StandardButton(QMessageBox& box)> ask;
    /// Runs the prepared dialog modally. @return the chosen files or folder; empty when cancelled
    std::function<QStringList(QFileDialog& dialog)> chooseFiles;
    /// Runs the prepared dialog modally. @return the text; empty when cancelled
    std::function<QString(QInputDialog& dialog)> askText;
    /// Opens a file or a folder with the desktop's own program. @return false when nothing could open it
    std::function<bool(const QUrl& url)> openUrl;
    /// Lets the user choose and set up the printer. @return false when cancelled
    std::function<bool(QPrinter& printer, QWidget* parent)> choosePrinter;
    /// Runs the prepared drag, which may only copy, until the files are dropped.
    std::function<void(QDrag& drag, Qt::DropActions actions)> drag;

    /// The one set of the process.
    static Dialogs& instance();
    /// Members that show the real dialogs.
    static Dialogs real();

    /// A MsgBox with Warnning(text), Error(text) or Information(title, text), run over `parent`.
    static int warn(QWidget* parent, const QString& text);
    static int error(QWidget* parent, const QString& text);
    static int inform(QWidget* parent, const QString& title, const QString& text);
    /// The same with Question(text). @return whether the user agreed
    static bool confirm(QWidget* parent, const QString& text);
};

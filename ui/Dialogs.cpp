#include "Dialogs.h"

#include "MsgBox.h"

#include <QDesktopServices>
#include <QDrag>
#include <QFileDialog>
#include <QInputDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QUrl>

namespace {

/// So that a list of files can be read, whatever size the caller proposes.
constexpr QSize leastForFiles(760, 480);

} // namespace

Dialogs& Dialogs::instance()
{
    static Dialogs dialogs = real();
    return dialogs;
}

Dialogs Dialogs::real()
{
    Dialogs dialogs;
    dialogs.runMessage = [](MsgBox& box) { return box.exec(); };
    dialogs.information =
        [](QWidget* parent, const QString& title, const QString& text, QMessageBox::StandardButtons buttons) {
            return QMessageBox::information(parent, title, text, buttons);
        };
    dialogs.ask = [](QMessageBox& box) { return QMessageBox::StandardButton(box.exec()); };
    dialogs.chooseFiles = [](QFileDialog& dialog) {
        dialog.resize(dialog.size().expandedTo(leastForFiles));
        dialog.setSizeGripEnabled(true); // its frame has no edges to pull at
        return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
    };
    dialogs.askText = [](QInputDialog& dialog) {
        return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
    };
    dialogs.openUrl = [](const QUrl& url) { return QDesktopServices::openUrl(url); };
    dialogs.choosePrinter = [](QPrinter& printer, QWidget* parent) {
        return QPrintDialog(&printer, parent).exec() == QDialog::Accepted;
    };
    dialogs.drag = [](QDrag& drag, Qt::DropActions actions) { drag.exec(actions); };
    return dialogs;
}

int Dialogs::warn(QWidget* parent, const QString& text)
{
    MsgBox box(parent);
    box.Warnning(text);
    return instance().runMessage(box);
}

int Dialogs::error(QWidget* parent, const QString& text)
{
    MsgBox box(parent);
    box.Error(text);
    return instance().runMessage(box);
}

int Dialogs::inform(QWidget* parent, const QString& title, const QString& text)
{
    MsgBox box(parent);
    box.Information(title, text);
    return instance().runMessage(box);
}

bool Dialogs::confirm(QWidget* parent, const QString& text)
{
    MsgBox box(parent);
    box.Question(text);
    return instance().runMessage(box) == QDialog::Accepted;
}

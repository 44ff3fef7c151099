#pragma once

#include "Dialogs.h"
#include "MsgBox.h"

#include <QLabel>
#include <QStringList>
#include <QUrl>

/// Answers every dialog for the length of a test and keeps what the user would have read and opened.
class AnsweredDialogs
{
public:
    AnsweredDialogs()
    {
        Dialogs& dialogs = Dialogs::instance();
        dialogs.runMessage = [this](MsgBox& box) {
            messages.append(box.findChild<QLabel*>(QStringLiteral("labelMessage"))->text());
            return int(QDialog::Accepted);
        };
        dialogs.ask = [this](QMessageBox& box) {
            messages.append(box.text() + QLatin1Char('|') + box.informativeText());
            return pressedButton;
        };
        dialogs.openUrl = [this](const QUrl& url) {
            opened.append(url.toLocalFile());
            return true;
        };
        dialogs.chooseFiles = [this](QFileDialog&) { return chosenFiles; };
        dialogs.choosePrinter = [](QPrinter&, QWidget*) { return false; };
    }
    ~AnsweredDialogs() { Dialogs::instance() = Dialogs::real(); }
    AnsweredDialogs(const AnsweredDialogs&) = delete;
    AnsweredDialogs& operator=(const AnsweredDialogs&) = delete;

    QStringList messages;
    QStringList opened;
    QStringList chosenFiles;
    QMessageBox::StandardButton pressedButton = QMessageBox::Ok;
};

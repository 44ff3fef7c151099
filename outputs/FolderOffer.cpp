#include "FolderOffer.h"

#include "Dialogs.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

#include <cstdio>

void FolderOffer::make(const QString& file) const
{
    QMessageBox box;
    box.setObjectName(QStringLiteral("FolderOffer"));
    box.setWindowTitle(title);
    box.setText(text);
    box.setInformativeText(question);
    box.setStandardButtons(QMessageBox::Open | QMessageBox::Ok);
    box.button(QMessageBox::Open)->setText(open);
    box.button(QMessageBox::Ok)->setText(finish);
    box.button(QMessageBox::Open)->setObjectName(QStringLiteral("buttonOpen"));
    box.button(QMessageBox::Ok)->setObjectName(QStringLiteral("buttonFinish"));
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    if (Dialogs::instance().ask(box) != QMessageBox::Open || file.isEmpty())
        return;
    const QString folder = QFileInfo(file).absolutePath();
    if (!Dialogs::instance().openUrl(QUrl::fromLocalFile(folder)))
        std::fprintf(stderr, "nothing opens %s\n", qPrintable(folder));
}

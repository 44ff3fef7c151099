#include "PaperTray.h"

#include <QFile>
#include <QSaveFile>

#include <cstdio>

void PaperTray::print(const QByteArray& bytes)
{
    paper_.print(bytes);
    isSaved_ = false;
}

void PaperTray::save()
{
    if (isSaved_ || paper_.isBlank())
        return;
    isSaved_ = true;
    for (int number = 1; path_.isEmpty(); ++number) {
        const QString path = QStringLiteral("%1/receipt-%2.png").arg(folder_).arg(number);
        if (!QFile::exists(path))
            path_ = path;
    }
    QSaveFile file(path_);
    if (!file.open(QIODevice::WriteOnly) || !paper_.image().save(&file, "PNG") || !file.commit())
        std::fprintf(stderr, "%s: %s\n", qPrintable(path_), qPrintable(file.errorString()));
}

void PaperTray::tearOff()
{
    save();
    paper_ = ReceiptPaper();
    path_.clear();
}

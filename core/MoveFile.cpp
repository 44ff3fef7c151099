#include "MoveFile.h"

#include "NewName.h"

#include <QFile>

int moveFile(const QString& from, const QString& to)
{
    return mirvak::moveToNewName(QFile::encodeName(from).toStdString(), QFile::encodeName(to).toStdString());
}

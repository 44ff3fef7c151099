#pragma once

#include <QStringList>
#include <QVector>

/// One text of a translation source file.
struct TsMessage
{
    QString context;
    QString source;
    QString comment;
    bool counts = false;
    QString translation; ///< of a text that counts something: the first form
    QStringList forms;   ///< one; of a text that counts something one for each grammatical number
    QString state;       ///< "unfinished", "vanished", "obsolete"; empty when it is in order
};

/// Reads a translation source file (Qt's TS format). Empty when the file cannot be read or is broken.
QVector<TsMessage> readTsFile(const QString& path);

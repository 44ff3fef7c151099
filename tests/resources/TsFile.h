#pragma once

#include <QString>
#include <QVector>

/// One text of a translation source file.
struct TsMessage
{
    QString context;
    QString source;
    QString comment;
    QString translation;
    QString state; ///< "unfinished", "vanished", "obsolete"; empty when it is in order
};

/// Reads a translation source file (Qt's TS format). Empty when the file cannot be read or is broken.
QVector<TsMessage> readTsFile(const QString& path);

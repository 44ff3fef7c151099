#pragma once

#include <QCoreApplication>

class QWidget;

/// Hands files over to the desktop. Each call answers with what the user must be told; empty when all went
/// well. GUI thread only.
class FileHandover
{
    Q_DECLARE_TR_FUNCTIONS(FileHandover)

public:
    /// With the desktop's program for its kind.
    static QString open(const QString& path);
    static QString openFolder(const QString& folder);
    /// Through the system's print dialog over `parent`, which the user may cancel.
    static QString print(const QString& path, QWidget* parent);
};

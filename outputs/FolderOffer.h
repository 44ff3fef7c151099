#pragma once

#include <QString>

/// What is asked after a file has been made.
struct FolderOffer
{
    QString title;
    QString text;
    QString question;
    QString open; ///< the button that opens the folder
    QString finish;

    /// Asks whether to open the folder of `file`, and does so when wanted. GUI thread only.
    void make(const QString& file) const;
};

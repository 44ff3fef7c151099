#pragma once

#include "ReceiptPaper.h"

/// Keeps receipts as pictures in a folder: receipt-1.png and so on, never in place of an older one.
class PaperTray
{
public:
    explicit PaperTray(QString folder) : folder_(std::move(folder)) {}

    void print(const QByteArray& bytes);
    /// Writes what was printed since. Appears whole under its name.
    void save();
    /// What follows goes on new paper.
    void tearOff();

private:
    const QString folder_;
    ReceiptPaper paper_;
    QString path_; ///< empty until the paper has a name
    bool isSaved_ = true;
};

#pragma once

#include <QString>

class QPixmap;

/// The file in which the rows of the saved cards are gathered, and the portraits beside it. Only the user may
/// read what it creates, folders too. A failure prints one line on standard error.
class CardInfoFile
{
public:
    explicit CardInfoFile(QString path) : path_(std::move(path)) {}

    /// Adds the row, whole or not at all; a file that is not there yet begins with the header.
    bool append(const QString& row) const;
    /// As JPEG, in place of an earlier one of that number.
    bool savePortrait(const QPixmap& portrait, const QString& number) const;

private:
    QString folder() const { return path_.left(path_.lastIndexOf(QLatin1Char('/')) + 1); }
    bool makeFolder() const;
    bool fail(int error) const;

    QString path_;
};

#pragma once

#include "Catalogue.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace deskpictures {

/// Takes the pictures and writes them and what is true of them into a folder. Each call may run on a thread
/// of its own; they throw OutputError.
class Studio
{
public:
    /// @param sizes  all of shape 4:3
    Studio(QString directory, std::vector<cv::Size> sizes);

    /// One exhibit of the catalogue in all sizes. @return its lines of truth.csv
    QByteArray take(size_t index) const;
    /// The flat page as a PNG, for comparison.
    void takeFlat(size_t index) const;
    /// What the second camera sees: the holder of the card, then the card.
    void takePortraits() const;
    /// The page-turning film and page-turn.csv.
    void takeFilm() const;
    /// The texts, codes.csv, and a link "main" to the largest size.
    void writeCompanions() const;

    static QByteArray truthHeader();
    static QString fileStem(size_t index);

private:
    QByteArray takeFlatPage(size_t index) const;
    QByteArray takeBook(size_t index) const;
    QString picturePath(cv::Size size, size_t index) const;

    QString m_directory;
    std::vector<cv::Size> m_sizes;
};

} // namespace deskpictures

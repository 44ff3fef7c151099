#pragma once

#include <QString>
#include <QStringList>

/// How far a reading is from what stands on the page, as shares of that.
struct Score
{
    double characters = 0; ///< wrong ones (Levenshtein), white space as one space: reading order counts
    double words = 0;      ///< missing or too many, in whatever order (ideographs one by one)
};

/// Against the nearest of the orders in which a person may read. Width and shape of punctuation do not count.
Score scoreOf(const QStringList& readings, const QString& read);

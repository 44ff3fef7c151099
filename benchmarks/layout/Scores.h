#pragma once

#include <QString>
#include <QStringList>

/// How far a reading is from what stands on the page, as shares of that.
struct Score
{
    double characters = 0; ///< wrong ones (Levenshtein), white space as one space: reading order counts
    double words = 0;      ///< missing or too many, in whatever order (ideographs one by one)
};

/// What highlighting tells of the words (ideographs one by one), wherever they stand.
struct Doubt
{
    int wrong = 0, marked = 0, both = 0;
};

/// `highlighted`: those words of `read` that are. Against the truth's words.
Doubt doubtOf(const QString& truth, const QString& read, const QString& highlighted);

/// Against the nearest of the orders in which a person may read. Width and shape of punctuation do not count.
Score scoreOf(const QStringList& readings, const QString& read);

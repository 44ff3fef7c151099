#pragma once

#include "Columns.h"
#include "ReadPage.h"
#include "TextModel.h"
#include "Watch.h"

namespace mirvak {

/// The picture of a page with all its ink, and of its own size.
struct PlainPicture
{
    cv::Mat grey;
    double dpi = 0;
};

/// A word's box as large as its marks: in a picture with rules and frames it may reach to one. What lies flat
/// reaches to none, and of a faded dash hardly a dot may be a mark.
Box withoutRules(const Box& word, const Marks& marks);

Homography homographyOf(const cv::Matx33d& matrix);

/// Reads the areas of a page one after the other. One thread at a time.
class AreaReader
{
public:
    /// All are borrowed. @param grey cleaned, and perhaps scaled
    AreaReader(TextModel& model, const cv::Mat& grey, const PlainPicture& plain, const Marks& marks);

    /// Reads the plain picture as a whole, which makes the fewest mistakes in scripts with spaces, and again
    /// from the cleaned one only the strips in which print was left out.
    void readAsWhole(ReadPage& page, const Limit& limit, const Stretch& stretch);
    /// Each area for itself: of what cannot be read in time the first ones stay.
    void readByAreas(ReadPage& page, const Limit& limit, const Stretch& stretch);

private:
    cv::Mat pictureOf(const TextArea& area) const;
    ReadBlock readWhole(const Limit& limit, bool& late, const Stretch& stretch);
    ReadBlock readAlone(const TextArea& area, const Limit& limit, bool& late, const Stretch& stretch);
    void readSideways(const TextArea& area, ReadPage& page, const Limit& limit);
    void readLost(ReadBlock& lines, const TextArea& area, const Limit& limit);
    void fillIn(ReadBlock& lines, const TextArea& area, const Limit& limit);

    TextModel& model_;
    const cv::Mat& grey_;
    const PlainPicture& plain_;
    const Marks& marks_;
    int margin_;
};

} // namespace mirvak

#include "Initials.h"

#include "Boxes.h"
#include "Components.h"
#include "Unicode.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace mirvak {

namespace {

// In heights of a mark.
constexpr double leastRoom = 1.2, mostRoom = 14;
constexpr double sameEdge = 0.7; // of lines that begin below each other
constexpr double widestPitch = 5;
constexpr double capital = 1.4;
constexpr double leastInitial = 2.2;
constexpr double between = 0.25; // the letter and its word

constexpr size_t leastLines = 2, mostLines = 5;     // beside the letter
constexpr double leastHeight = 0.5;                 // of the room's
constexpr double mostWidth = 1.6, leastWidth = 0.1; // of its own height
constexpr size_t mostInitials = 12;                 // of a page
constexpr int ink = 160;

/// Where lines leave room at their begin.
struct Room
{
    cv::Rect place;
    size_t line; ///< the first one
};

// How many lines from `first` begin below each other before one begins to their left.
size_t linesBeside(const ReadBlock& lines, size_t first, int height)
{
    size_t end = first + 1;
    while (end < lines.size() && std::abs(lines[end].box.left - lines[first].box.left) <= sameEdge * height &&
           lines[end].box.top - lines[end - 1].box.top < widestPitch * height)
        ++end;
    const bool isLast =
        end == lines.size() || lines[end].box.top - lines[end - 1].box.top >= widestPitch * height;
    return isLast ? 0 : end - first;
}

std::vector<Room> roomsOf(const ReadBlock& lines, int height)
{
    std::vector<Room> rooms;
    for (size_t i = 0; i < lines.size();) {
        const size_t count = linesBeside(lines, i, height);
        const size_t next = i + std::max<size_t>(1, count);
        if (count >= leastLines && count <= mostLines) {
            const int left = lines[next].box.left, room = lines[i].box.left - left;
            if (room >= leastRoom * height && room <= mostRoom * height) {
                const int top = lines[i].box.top - height, bottom = lines[next - 1].box.bottom;
                rooms.push_back({cv::Rect(left - height / 2, top, room + height / 2, bottom - top), i});
            }
        }
        i = next;
    }
    return rooms;
}

/// The one large letter, dark on paper.
std::optional<cv::Mat> letterIn(const cv::Mat& room)
{
    const Components parts(room < ink);
    cv::Rect letter;
    for (int i = 1; i < parts.count; ++i) {
        if (parts.box(i).height > letter.height)
            letter = parts.box(i);
    }
    if (letter.height < leastHeight * room.rows || letter.width > mostWidth * letter.height ||
        letter.width < leastWidth * letter.height)
        return std::nullopt;
    return room(letter).clone();
}

// Where most letters of the word end.
int baselineOf(const cv::Mat& word)
{
    const Components parts(word < ink);
    std::vector<int> ends{word.rows};
    for (int i = 1; i < parts.count; ++i) {
        if (parts.box(i).height * 3 > word.rows)
            ends.push_back(parts.box(i).br().y);
    }
    const auto middle = ends.begin() + static_cast<std::ptrdiff_t>((ends.size() - 1) / 2);
    std::nth_element(ends.begin(), middle, ends.end());
    return *middle;
}

cv::Mat setBefore(const cv::Mat& letter, const cv::Mat& word, int height)
{
    const double factor = capital * height / letter.rows;
    cv::Mat small;
    cv::resize(letter, small, {}, factor, factor, factor < 1 ? cv::INTER_AREA : cv::INTER_CUBIC);
    const int rim = height, baseline = rim + std::max(small.rows, baselineOf(word));
    const int right = rim + small.cols + cvRound(between * height);
    cv::Mat row(baseline + word.rows + rim, right + word.cols + rim, CV_8UC1, cv::Scalar(255));
    small.copyTo(row(cv::Rect({rim, baseline - small.rows}, small.size())));
    word.copyTo(row(cv::Rect({right, baseline - baselineOf(word)}, word.size())));
    return row;
}

// A letter that is a word has a space behind it.
void put(ReadLine& line, ReadWord letter, bool isApart, const TextModel& model)
{
    ReadWord& first = line.words.front();
    letter.box.top = first.box.top;
    letter.box.bottom = first.box.bottom;
    const std::string whole = letter.text + first.text;
    line.box.left = letter.box.left;
    if (!model.knows(whole) && (isApart || (model.knows(letter.text) && model.knows(first.text)))) {
        line.words.insert(line.words.begin(), std::move(letter));
    } else {
        first.text = whole;
        first.box.left = letter.box.left;
    }
}

// Where the recogniser did read it, it takes it for the first word of a line further down.
void takeUp(ReadBlock& lines, int height, const TextModel& model)
{
    for (size_t i = 1; i < lines.size(); ++i) {
        std::vector<ReadWord>& words = lines[i].words;
        ReadLine& above = lines[i - 1];
        if (words.size() < 2 || above.words.empty() || fromUtf8(words.front().text).size() != 1 ||
            words.front().box.height() < leastInitial * height ||
            words.front().box.top > above.box.top + height || words.front().box.right > above.box.left)
            continue;
        put(above, words.front(), true, model);
        words.erase(words.begin());
        lines[i].box = boxAround(words);
    }
}

class Reader
{
public:
    Reader(const PlainPicture& plain, double factor, int height, TextModel& model, const Limit& limit)
        : plain_(plain), factor_(factor), height_(height), model_(model), limit_(limit)
    {
    }

    void read(ReadLine& line, const Room& room) const
    {
        const std::optional<cv::Mat> letter = letterIn(pictureOf(room.place));
        if (!letter || line.words.empty())
            return;
        bool late = false;
        const cv::Mat row = setBefore(*letter, pictureOf(rectOf(line.words.front().box)), height_);
        const ReadBlock lines = model_.read(row, {}, Shape::row, limit_, late);
        if (!late && lines.size() == 1)
            believe(line, lines.front(), room.place);
    }

private:
    cv::Mat pictureOf(const cv::Rect& place) const
    {
        const cv::Rect part(cvRound(place.x / factor_),
                            cvRound(place.y / factor_),
                            cvRound(place.width / factor_),
                            cvRound(place.height / factor_));
        const cv::Rect inside = part & cv::Rect({0, 0}, plain_.grey.size());
        cv::Mat picture;
        if (!inside.empty())
            cv::resize(plain_.grey(inside), picture, {}, factor_, factor_, cv::INTER_CUBIC);
        return picture;
    }

    void believe(ReadLine& line, const ReadLine& again, const cv::Rect& place) const
    {
        std::string whole;
        for (const ReadWord& word : again.words)
            whole += word.text;
        const std::string& before = line.words.front().text;
        const std::u32string text = fromUtf8(whole), rest = fromUtf8(before);
        if (text.size() != rest.size() + 1 || text.substr(1) != rest || !isReadable(text.front()))
            return;
        ReadWord letter = again.words.front();
        letter.text = whole.substr(0, whole.size() - before.size());
        letter.box = boxOf(place);
        put(line, letter, again.words.front().text == letter.text, model_);
    }

    const PlainPicture& plain_;
    double factor_;
    int height_;
    TextModel& model_;
    Limit limit_;
};

} // namespace

void readInitials(
    ReadPage& page, const PlainPicture& plain, const Marks& marks, TextModel& model, const Limit& limit)
{
    const Reader reader(plain, static_cast<double>(page.width) / plain.grey.cols, marks.height, model, limit);
    size_t left = mostInitials;
    for (ReadBlock& block : page.blocks) {
        takeUp(block, marks.height, model);
        for (const Room& room : roomsOf(block, marks.height)) {
            if (left-- == 0 || limit.isOver())
                return;
            reader.read(block[room.line], room);
        }
    }
}

} // namespace mirvak

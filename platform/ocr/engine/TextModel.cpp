#include "TextModel.h"

#include "Shortcuts.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/ocrclass.h>
#include <tesseract/resultiterator.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace mirvak {

namespace {

using tesseract::RIL_TEXTLINE;
using tesseract::RIL_WORD;

constexpr double fullProgress = 70; // percent: what the first pass over the words counts; there is no other

/// One call of the recogniser, which asks between the words.
struct Watched
{
    Limit limit;
    Stretch stretch;
    tesseract::ETEXT_DESC monitor;
};

struct PixDelete
{
    void operator()(Pix* pix) const { pixDestroy(&pix); }
};
using PixHandle = std::unique_ptr<Pix, PixDelete>;

// Its words are packed big-endian: the leftmost pixel is the highest byte.
PixHandle pixOf(const cv::Mat& grey)
{
    PixHandle pix(pixCreate(grey.cols, grey.rows, 8));
    if (!pix)
        return pix;
    l_uint32* row = pixGetData(pix.get());
    const int words = pixGetWpl(pix.get());
    for (int y = 0; y < grey.rows; ++y, row += words)
        std::memcpy(row, grey.ptr(y), static_cast<size_t>(grey.cols));
    pixEndianByteSwap(pix.get()); // changes nothing where bytes lie in that order already
    return pix;
}

Box boxAt(const tesseract::PageIterator& at, tesseract::PageIteratorLevel level, const cv::Point& origin)
{
    Box box;
    at.BoundingBox(level, &box.left, &box.top, &box.right, &box.bottom);
    return {box.left + origin.x, box.top + origin.y, box.right + origin.x, box.bottom + origin.y};
}

template <class Iterator> ReadBlock collect(Iterator& at, const cv::Point& origin)
{
    ReadBlock lines;
    do {
        if (at.Empty(RIL_WORD))
            continue;
        if (lines.empty() || at.IsAtBeginningOf(RIL_TEXTLINE)) {
            lines.emplace_back();
            lines.back().box = boxAt(at, RIL_TEXTLINE, origin);
        }
        const std::unique_ptr<char[]> text(at.GetUTF8Text(RIL_WORD));
        if (text && text[0] != 0)
            lines.back().words.push_back({text.get(), boxAt(at, RIL_WORD, origin), at.Confidence(RIL_WORD)});
    } while (at.Next(RIL_WORD));
    lines.erase(
        std::remove_if(lines.begin(), lines.end(), [](const ReadLine& line) { return line.words.empty(); }),
        lines.end());
    return lines;
}

struct Recogniser : tesseract::TessBaseAPI
{
    using tesseract::TessBaseAPI::GetLTRIterator;
};

bool hasRightToLeft(tesseract::LTRResultIterator& at)
{
    do {
        if (at.WordDirection() == tesseract::DIR_RIGHT_TO_LEFT)
            return true;
    } while (at.Next(RIL_WORD));
    return false;
}

// The iterator for any direction puts the words of a line in order anew for each of them, which nobody needs
// where all go one way.
ReadBlock collect(Recogniser& api, const cv::Point& origin)
{
    const std::unique_ptr<tesseract::LTRResultIterator> at(api.GetLTRIterator());
    if (!at)
        return {};
    if (hasRightToLeft(*at)) {
        const std::unique_ptr<tesseract::ResultIterator> ordered(api.GetIterator());
        return ordered ? collect(*ordered, origin) : ReadBlock();
    }
    at->Begin();
    return collect(*at, origin);
}

} // namespace

struct TextModel::Engine
{
    Recogniser api;
    ~Engine() { api.End(); }
};

TextModel::TextModel(std::unique_ptr<Engine> engine, std::string language)
    : engine_(std::move(engine)), language_(std::move(language))
{
}

TextModel::~TextModel() = default;

std::unique_ptr<TextModel> TextModel::load(const std::string& directory, const std::string& language)
{
    setMsgSeverity(L_SEVERITY_NONE); // the results say it
    auto engine = std::make_unique<Engine>();
    const std::vector<std::string> names{"debug_file"}, values{"/dev/null"};
    if (engine->api.Init(directory.c_str(),
                         language.c_str(),
                         tesseract::OEM_LSTM_ONLY,
                         nullptr,
                         0,
                         &names,
                         &values,
                         false) != 0)
        return nullptr;
    return std::unique_ptr<TextModel>(new TextModel(std::move(engine), language));
}

struct TextModel::Call
{
    tesseract::PageSegMode division;
    double dpi;
    cv::Point origin;
    const Limit& limit;
    const Stretch& stretch;
};

ReadBlock TextModel::read(const cv::Mat& part,
                          const cv::Point& origin,
                          Shape shape,
                          const Limit& limit,
                          bool& late,
                          const Stretch& stretch)
{
    const auto division = shape == Shape::row ? tesseract::PSM_SINGLE_LINE : tesseract::PSM_SINGLE_BLOCK;
    return recognise(part, {division, nominalDpi, origin, limit, stretch}, late);
}

ReadBlock
TextModel::readPage(const cv::Mat& grey, double dpi, const Limit& limit, bool& late, const Stretch& stretch)
{
    return recognise(grey, {tesseract::PSM_AUTO, dpi, {}, limit, stretch}, late);
}

ReadBlock TextModel::recognise(const cv::Mat& part, const Call& call, bool& late)
{
    const PixHandle pix = pixOf(part);
    late = call.limit.isOver() || !pix;
    if (late)
        return {};
    auto& api = engine_->api;
    api.SetPageSegMode(call.division);
    // A line that reads badly would be read once more as light on dark, but rows come from a cleaned picture:
    // they are weak because they are asked of a model that cannot read them.
    api.SetVariable("tessedit_do_invert", call.division == tesseract::PSM_SINGLE_LINE ? "0" : "1");
    api.SetImage(pix.get());
    api.SetSourceResolution(static_cast<int>(std::lround(call.dpi)));
    Watched watched{call.limit, call.stretch, {}};
    watched.monitor.cancel_this = &watched;
    watched.monitor.cancel = [](void* data, int) {
        const auto& asked = *static_cast<Watched*>(data);
        asked.stretch.reach(asked.monitor.progress / fullProgress);
        return asked.limit.isOver();
    };
    const BarePixels bare;
    late = api.Recognize(&watched.monitor) != 0;
    call.stretch.reach(1);
    return late ? ReadBlock() : collect(api, call.origin);
}

bool TextModel::knows(const std::string& word) const
{
    return engine_->api.IsValidWord(word.c_str()) > 0;
}

bool isUnspaced(const std::string& language)
{
    const auto startsWith = [&](const char* name) { return language.rfind(name, 0) == 0; };
    return startsWith("chi_") || startsWith("jpn") || startsWith("tha");
}

} // namespace mirvak

#include "Scores.h"

#include "RtfText.h"
#include "Unicode.h"

#include <QRegularExpression>

#include <algorithm>
#include <map>

namespace {

/// One space for any white space, none beside ideographs; one form of each mark.
std::u32string plain(QString text)
{
    // A word broken at the end of a line is one word, whether its reader joins it or not.
    static const QRegularExpression torn(QStringLiteral("(?<=\\w)[-\u00ad\u2010] ?\n\\s*(?=\\w)"),
                                         QRegularExpression::UseUnicodePropertiesOption);
    text.remove(torn);
    std::u32string out;
    for (char32_t c : text.normalized(QString::NormalizationForm_KC).toStdU32String()) {
        if (c == U'“' || c == U'”' || c == U'„' || c == U'«' || c == U'»')
            c = U'"';
        if (c == U'‘' || c == U'’')
            c = U'\'';
        if (c == U'—' || c == U'–')
            c = U'-';
        const bool isSpace = c <= U' ', wide = mirvak::isIdeographic(c);
        if (!isSpace && !out.empty() && out.back() == U' ' && (wide || out.size() == 1))
            out.pop_back();
        if (!isSpace)
            out += c;
        else if (!out.empty() && out.back() != U' ' && !mirvak::isIdeographic(out.back()))
            out += U' ';
    }
    while (!out.empty() && out.back() == U' ')
        out.pop_back();
    return out;
}

std::map<std::u32string, int> bagOf(const std::u32string& text)
{
    std::map<std::u32string, int> bag;
    std::u32string word;
    const auto put = [&] {
        if (!word.empty())
            ++bag[word];
        word.clear();
    };
    for (const char32_t c : text) {
        if (mirvak::isIdeographic(c)) {
            put();
            word = c;
            put();
        } else if (mirvak::isReadable(c)) {
            word += c;
        } else {
            put();
        }
    }
    put();
    return bag;
}

double bagErrors(const std::u32string& truth, const std::u32string& read)
{
    const auto wanted = bagOf(truth), found = bagOf(read);
    double all = 0, missing = 0, extra = 0;
    for (const auto& [word, count] : wanted) {
        const auto other = found.find(word);
        all += count;
        missing += std::max(0, count - (other == found.end() ? 0 : other->second));
    }
    for (const auto& [word, count] : found) {
        const auto other = wanted.find(word);
        extra += std::max(0, count - (other == wanted.end() ? 0 : other->second));
    }
    return std::max(missing, extra) / std::max(1.0, all);
}

} // namespace

Score scoreOf(const QStringList& readings, const QString& read)
{
    const std::u32string found = plain(read);
    Score best{1e9, 1e9};
    for (const QString& reading : readings) {
        const std::u32string truth = plain(reading);
        const double wrong = static_cast<double>(editDistance(truth, found)) /
                             static_cast<double>(std::max<size_t>(1, truth.size()));
        if (wrong < best.characters)
            best = {wrong, bagErrors(truth, found)};
    }
    return best;
}

Doubt doubtOf(const QString& truth, const QString& read, const QString& highlighted)
{
    const auto wanted = bagOf(plain(truth)), marked = bagOf(plain(highlighted));
    const auto in = [](const std::map<std::u32string, int>& bag, const std::u32string& word) {
        const auto found = bag.find(word);
        return found == bag.end() ? 0 : found->second;
    };
    Doubt doubt;
    for (const auto& [word, count] : bagOf(plain(read))) {
        const int wrong = std::max(0, count - in(wanted, word));
        doubt.wrong += wrong;
        doubt.marked += in(marked, word);
        doubt.both += std::min(wrong, in(marked, word));
    }
    return doubt;
}

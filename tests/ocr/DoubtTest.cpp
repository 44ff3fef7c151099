// Which words are said to be unsure.
#include "Doubt.h"

#include <gtest/gtest.h>

using mirvak::ReadPage;

namespace {

/// Of a word that was read like that on a page of this language, where dictionaries have "Harbour" and "港".
bool isUnsure(const char* language, const char* text, float confidence)
{
    ReadPage page;
    page.language = language;
    page.blocks = {{{{{text, {0, 0, 90, 30}, confidence}}, {0, 0, 90, 30}}}};
    mirvak::markUnsure(page, [](const std::string& word) { return word == "Harbour" || word == "港"; });
    return page.blocks[0][0].words[0].isUnsure;
}

/// The least percent that is believed.
int leastOf(const char* language, const char* text)
{
    int least = 0;
    while (least < 100 && isUnsure(language, text, static_cast<float>(least)))
        ++least;
    for (int more = least; more <= 100; ++more)
        EXPECT_FALSE(isUnsure(language, text, static_cast<float>(more))) << text << more;
    return least;
}

} // namespace

TEST(Doubt, DictionariesScriptAndPageSayWhatAConfidenceIsWorth)
{
    const int known = leastOf("eng", "Harbour"), unknown = leastOf("eng", "Hxrbovr");
    EXPECT_LT(known, 50) << "a dictionary's word is seldom wrong";
    EXPECT_GT(unknown, 80);
    EXPECT_EQ(leastOf("eng", "\u201cHarbour,\u201d"), known) << "punctuation belongs to no word";
    const int foreign = leastOf("chi_sim", "Hxrbovr");
    EXPECT_GT(foreign, unknown) << "letters among ideographs may be worn strokes";
    EXPECT_GT(leastOf("chi_sim", "Harbour"), known);
    EXPECT_LT(leastOf("chi_sim", "港"), leastOf("chi_sim", "湾"));
    EXPECT_LT(leastOf("chi_sim", "湾"), unknown);
    const int number = leastOf("eng", "1 204");
    EXPECT_GT(number, 70);
    EXPECT_LT(number, 80) << "which no dictionary can know";
    EXPECT_EQ(leastOf("eng", "\u2014"), 0) << "a dash has nothing to be looked at";
}

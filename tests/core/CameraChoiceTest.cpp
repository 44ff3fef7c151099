#include "CameraChoice.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

class CameraChoiceTest : public ::testing::Test
{
protected:
    using List = QStringList;
    static Camera camera(const char* identity, int type)
    {
        const QString name = QLatin1String(identity);
        return {name, name, name, type};
    }
    void listed(const Cameras& cameras) { choice_.listed(cameras, now_); }
    void pass(std::chrono::milliseconds time) { now_ += time; }
    QString better() const { return choice_.better(now_); }
    List candidates() const { return choice_.candidates(); }
    void open(const char* identity) { choice_.opened(QLatin1String(identity)); }
    void lose(const char* identity) { choice_.lost(QLatin1String(identity), now_); }
    void choose(const char* identity) { choice_.chosen(QLatin1String(identity), now_); }

    const Camera desk_ = camera("desk", 1), spare_ = camera("spare", 1), face_ = camera("face", 2),
                 infrared_ = camera("infrared", 3);
    CameraChoice choice_;
    CameraChoice::Time now_{1h};
};

TEST_F(CameraChoiceTest, AtTheStartTheFirstDocumentCameraAndNoOther)
{
    listed({face_, desk_, spare_});
    EXPECT_EQ(candidates(), List{QStringLiteral("desk")});
    open("desk");
    pass(1s);
    EXPECT_EQ(better(), QString());

    CameraChoice others;
    others.listed({face_, infrared_}, now_);
    EXPECT_EQ(others.candidates(), List());
    others.listed({face_, infrared_, camera("new", 2)}, now_ + 1h);
    EXPECT_EQ(others.candidates(), List{QStringLiteral("new")}) << "the search has not ended";
    others = {};
    others.listed({face_}, now_);
    others.listed({}, now_ + 1h);
    others.listed({face_}, now_ + 2h);
    EXPECT_EQ(others.candidates(), List{QStringLiteral("face")}) << "this time it has been plugged in";
}

TEST_F(CameraChoiceTest, WhatIsPluggedInWhileNoneWorksIsOpenedTheBestKindFirst)
{
    listed({});
    pass(1min);
    listed({infrared_, face_, desk_});
    EXPECT_EQ(candidates(),
              (List{QStringLiteral("desk"), QStringLiteral("face"), QStringLiteral("infrared")}));
    open("desk");
    pass(1min);
    lose("desk");
    listed({infrared_, face_});
    EXPECT_EQ(candidates(), List()) << "they were there all the time, for other ends";
    pass(1min);
    listed({infrared_, face_, spare_});
    EXPECT_EQ(candidates(), List{QStringLiteral("spare")});
    listed({infrared_, face_, spare_, desk_});
    EXPECT_EQ(candidates().first(), QStringLiteral("desk"));
    open("desk");
    pass(1min);
    listed({infrared_, face_, camera("new", 2)});
    pass(1s);
    lose("desk");
    EXPECT_EQ(candidates(), List{QStringLiteral("new")}) << "listed before the end of the other was noticed";
    pass(1s);
    choose("face");
    EXPECT_EQ(candidates(), List{QStringLiteral("face")}) << "and no other when that cannot be opened";
}

TEST_F(CameraChoiceTest, TheLostOneTakesItsPlaceBackForTenSeconds)
{
    for (const auto& [after, back] : {std::pair{9s, QStringLiteral("desk")}, std::pair{11s, QString()}}) {
        choice_ = {};
        listed({desk_});
        open("desk");
        lose("desk");
        listed({});
        pass(1s);
        listed({desk_});
        EXPECT_EQ(better(), QString()) << "better than none is no question";
        open("desk");
        EXPECT_EQ(better(), QString()) << "it is back already";
        lose("desk");
        listed({});
        pass(1s);
        listed({spare_});
        open("spare");
        EXPECT_EQ(better(), QString());
        pass(after - 1s);
        listed({spare_, desk_});
        EXPECT_EQ(better(), back);
        choose("spare");
        open("spare");
        EXPECT_EQ(better(), QString()) << "the user has chosen meanwhile";
    }
}

TEST_F(CameraChoiceTest, ACameraWithTwoHeadsEndsWithItsDocumentHead)
{
    for (const bool chosen : {false, true}) {
        choice_ = {};
        listed({});
        listed({face_});
        open("face");
        if (chosen) {
            choose("face");
            open("face");
        }
        pass(3s);
        listed({face_, desk_});
        EXPECT_EQ(better(), chosen ? QString() : QStringLiteral("desk"));
    }
    choice_ = {};
    listed({});
    listed({face_, desk_});
    open("face");
    EXPECT_EQ(better(), QStringLiteral("desk")) << "both came at once, and this one was slower";
    choice_ = {};
    listed({});
    listed({face_});
    open("face");
    pass(6s);
    listed({face_, desk_});
    EXPECT_EQ(better(), QString()) << "another device";
    choice_ = {};
    listed({desk_}); // which another program uses
    pass(1min);
    listed({desk_, face_});
    open("face");
    EXPECT_EQ(better(), QString()) << "nor is one that was there before it";

    // The first head was the largest camera for as long as it was alone.
    choice_ = {};
    listed({camera("face", 1)});
    open("face");
    pass(1s);
    listed({face_, desk_});
    EXPECT_EQ(better(), QStringLiteral("desk"));
}

TEST_F(CameraChoiceTest, WhatTheUserChoseIsTriedAgainAndFoundAgain)
{
    listed({desk_, face_});
    open("desk");
    pass(1s);
    choose("face"); // which fails
    EXPECT_EQ(candidates(), List{QStringLiteral("face")});
    open("face");
    lose("face");
    listed({});
    listed({desk_});
    open("desk");
    listed({desk_, face_});
    EXPECT_EQ(better(), QStringLiteral("face"));
    open("face");
    EXPECT_EQ(better(), QString());
    choice_ = {};
    listed({});
    pass(1min);
    listed({face_, spare_});
    pass(1s);
    choose("spare");
    EXPECT_EQ(candidates(), List{QStringLiteral("spare")}) << "no other that was plugged in before";
}

} // namespace

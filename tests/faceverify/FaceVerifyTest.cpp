// What the face window makes of cards, faces and their scores.
#include "FaceVerifyFixture.h"

namespace {

TEST_F(FaceVerifyTest, OneClickReadsTheCardTakesTheFaceAndComparesThem)
{
    open(colour() + ", " + infrared());
    libraries_.score = 50;
    click("buttonOneClick");
    ASSERT_EQ(dialogs_.messages.size(), 1);
    EXPECT_TRUE(
        dialogs_.messages.first().startsWith(QStringLiteral("Please confirm that your ID card is in")));
    const QStringList shown{box("editName"),
                            box("editGender"),
                            box("editNation"),
                            box("editYear"),
                            box("editMonth"),
                            box("editDay"),
                            box("editPeriod")};
    EXPECT_EQ(shown.join(QLatin1Char('|')), QStringLiteral("张样本|女|汉族|1990|02|03|20200101-20400101"));
    EXPECT_EQ(result(), QStringLiteral("Face comparison success, score:50"));
    ASSERT_EQ(libraries_.asked.size(), 2U);
    EXPECT_EQ(libraries_.asked.back(), "IMAGE_000.jpg");
    for (const auto& file : std::filesystem::directory_iterator(folder().file("tmp")))
        EXPECT_EQ(file.status().permissions() & std::filesystem::perms(077), std::filesystem::perms::none);
    ASSERT_EQ(files().size(), 1);
    EXPECT_GT(colourOf(0).red(), 200) << "of the colour camera, whichever is first";
    EXPECT_LT(colourOf(0).green(), 60);
    EXPECT_EQ(QFile::permissions(pictures() + QStringLiteral("/IMAGE_000.jpg")) &
                  (QFile::ReadGroup | QFile::ReadOther),
              0);
    auto* video = part<FaceVideo>(*window_, "video");
    const auto frame = [&] { // left edge of the face: a quarter of the picture, which is as high as the view
        const double scale = std::min(video->width() / 640.0, video->height() / 480.0);
        const QPointF corner = video->rect().center() - QPointF(320, 240) * scale;
        const QColor line =
            video->grab().toImage().pixelColor((corner + QPointF(160, 280) * scale).toPoint());
        return line.green() > 150;
    };
    EXPECT_EQ(portrait(), QColor(Qt::red)) << "of the card";
    EXPECT_TRUE(QTest::qWaitFor(frame, 10'000)) << "the found face is framed";
    click("buttonVerify"); // while the live picture is looked at
    EXPECT_EQ(result(), QStringLiteral("Face comparison success, score:50"));
    libraries_.isFaceSeen = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !frame(); }, 60'000)) << "it has gone";

    click("buttonScanner"); // both roles
    ASSERT_EQ(files().size(), 3);
    EXPECT_GT(colourOf(1).red() - colourOf(1).green(), 150);
    EXPECT_LT(colourOf(2).red() - colourOf(2).green(), 30);
}

TEST_F(FaceVerifyTest, ScoresAndFailedStepsBecomeTexts)
{
    open(colour());
    window_->readidcard();
    window_->scannerimg();
    const auto says = [&](const char* text) {
        libraries_.asked.clear();
        click("buttonVerify");
        EXPECT_EQ(result(), QLatin1String(text));
    };
    libraries_.score = 49;
    says("Face comparison failed, score:49");
    libraries_.score = 100;
    ReadZktCard().readhycardinfo(); // another window reads a card, and ends
    QFile::remove(QString::fromStdString(libraries_.portraitPath));
    says("Face comparison success, score:100");
    libraries_.throws = true;
    says("");
    EXPECT_EQ(note(), QString()) << "it compares no longer";
    libraries_.throws = false;
    libraries_.reads["IMAGE_000.jpg"] = 77; // no match, whatever its number
    says("Face comparison failed, score:-77");
    libraries_.reads.clear();
    libraries_.faces = 0;
    says("Face comparison failed, score:0");
    libraries_.faces = 2;
    says("Face comparison success, score:100");
    libraries_.features = ID_FACE_NO_FACE;
    says("Face comparison failed, score:-6");
    libraries_.features = 0;
    libraries_.starts = ID_FACE_NO_WEIGHTS;
    says("");
    EXPECT_EQ(dialogs_.messages,
              QStringList{QStringLiteral("The face library cannot be used on this computer!")});
    libraries_.starts = ID_FACE_OK;

    libraries_.cardType = 1; // and the last person's card is forgotten
    click("buttonReadCard");
    EXPECT_EQ(dialogs_.messages.last(), QStringLiteral("Read idcard failed!"));
    EXPECT_EQ(box("editName"), QString());
    EXPECT_EQ(portrait(), QColor());
    says("Face comparison failed, score:-2");
    libraries_.cardType = 0;
    libraries_.isForeign = true;
    click("buttonReadCard");
    EXPECT_EQ(box("editName"), QStringLiteral("张样本"));
    says("Face comparison failed, score:-2");
    EXPECT_EQ(note(), QString()) << "but a card has been read";
    EXPECT_TRUE(libraries_.asked.empty()) << "nobody is compared with what somebody else has put there";
    libraries_.isForeign = false;
    libraries_.portrait = QColor();
    click("buttonReadCard");
    EXPECT_EQ(box("editName"), QStringLiteral("张样本"));
    EXPECT_EQ(portrait(), QColor()) << "that of the card before";
    libraries_.portrait = Qt::red;
    keepOnly("");
    click("buttonOneClick");
    EXPECT_EQ(result(), QStringLiteral("Face comparison failed, score:-2"));
    EXPECT_EQ(note(), QStringLiteral("There is no new picture of the face.")) << "but one taken before";
}

TEST_F(FaceVerifyTest, WhatTheLibraryCannotReadIsNoLivingFaceWhateverItsNumber)
{
    open(colour() + ", " + infrared("fail_start = true;"));
    EXPECT_EQ(placeholder(), QString()) << "the colour camera is enough";
    window_.reset();
    open(colour() + ", " + infrared());
    for (const char* name : {"IMAGE_000.jpg", "IMAGE_001.jpg"})
        libraries_.reads[name] = 90;
    click("buttonLiveFace");
    EXPECT_EQ(result(), QStringLiteral("This is not a living face."));
    libraries_.reads.clear();
    libraries_.width = 20'002; // more pixels than any camera has
    window_->readidcard();
    click("buttonVerify");
    EXPECT_EQ(result(), QStringLiteral("Face comparison failed, score:-3"));
}

TEST_F(FaceVerifyTest, TheInfraredPictureHasTheFirstWordOnLiveness)
{
    constexpr const char* living = "This is a living face.";
    constexpr const char* notLiving = "This is not a living face.";
    struct Life
    {
        std::vector<int> scores;
        int status, faces;
        const char* text;
        const char* printed; ///< of the last question
        size_t asked;        ///< pictures
    };
    open(colour() + ", " + infrared());
    for (const Life& life : {Life{{19, 50}, 1, 1, living, "IdFaceSdkFaceLive return 0. (score=50)", 2},
                             Life{{20}, 1, 1, notLiving, "return 0. (score=20)", 1},
                             Life{{49}, 1, 1, notLiving, "(score=49)", 1},
                             Life{{0, 19}, 1, 1, notLiving, "(score=19)", 2},
                             Life{{90}, 1, 1, living, "return 1. (score=90)", 1},
                             Life{{}, 0, 1, notLiving, "LiveFace not support!", 0},
                             Life{{}, 1, 2, notLiving, "Detect face fail.", 2}}) {
        libraries_.lives = life.scores;
        libraries_.status = life.status;
        libraries_.faces = life.faces;
        libraries_.asked.clear();
        testing::internal::CaptureStdout();
        click("buttonLiveFace");
        const std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_NE(printed.find(life.printed), std::string::npos) << printed;
        EXPECT_EQ(result(), QLatin1String(life.text));
        EXPECT_EQ(libraries_.asked.size(), life.asked);
        const std::string infraredName = files().last().toStdString(); // the second of the two
        EXPECT_TRUE(life.asked == 0 || libraries_.asked.front() == infraredName);
        EXPECT_TRUE(libraries_.lives.empty());
    }
}

} // namespace

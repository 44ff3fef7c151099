// The cards of the virtual desk, through the library.
#include "CardDesk.h"
#include "Codec.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

class DeskCards : public CardDesk
{
protected:
    DeskCards()
    {
        h_idcard_setPhotoPath(portrait.c_str());
        EXPECT_EQ(h_idcard_openDevice(), HIDCARD_OK);
    }
    static std::string field(int index)
    {
        std::string text(HIDCARD_TEXT_BYTES + 1, '!');
        const int result = h_idcard_readData(0, index, text.data());
        EXPECT_EQ(text.back(), '!') << "behind the buffer";
        return result == HIDCARD_OK ? text.c_str() : "-";
    }

    const std::string portrait = folder.file("elphoto.bmp");
};

} // namespace

TEST_F(DeskCards, TheOneLaidLastIsReadWithItsPortrait)
{
    EXPECT_EQ(h_idcard_readInfo(), HIDCARD_NO_CARD);
    EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_LOOKING);
    mirvak::Image face;
    face.pixels = cv::Mat(126, 102, CV_8UC3, cv::Scalar(200, 100, 50));
    folder.write("cards/face.png", mirvak::encodeImage("png", face, 0));
    fs::create_symlink(folder.write("victim", "stays"), portrait);
    lay("b.cfg",
        "type = 0; name = \"张样本\"; gender = \"2\"; from = \"20200101\"; to = \"20300101\"; picture = "
        "\"face.png\";");
    EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_READY);
    EXPECT_EQ(h_idcard_readInfo(), 0);
    EXPECT_EQ(field(0) + field(1) + field(2), "张样本2-");
    EXPECT_EQ(field(7) + field(8), "2020010120300101");
    EXPECT_EQ(folder.content("victim"), "stays");
    struct stat entry
    {
    };
    ASSERT_EQ(lstat(portrait.c_str(), &entry), 0);
    EXPECT_EQ(entry.st_mode, unsigned(S_IFREG | 0600));
    EXPECT_EQ(folder.content("elphoto.bmp").substr(0, 2), "BM");
    EXPECT_EQ(cv::norm(mirvak::readImage(portrait).value().pixels, face.pixels, cv::NORM_INF), 0);
    for (const char* other : {".hidden.cfg", "notes.txt"})
        lay(other, "type = 1;");
    EXPECT_EQ(h_idcard_openDevice(), HIDCARD_OK) << "for another window";
    EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_LOOKING) << "until it is lifted";
    EXPECT_EQ(field(0), "张样本");

    std::string longName;
    for (int i = 0; i < 127; ++i)
        longName += "ä";
    lay("a.cfg", "type = 3; name = \"" + longName + "ä\"; address = \"there\"; authority = \"9\";");
    EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_READY);
    EXPECT_EQ(h_idcard_readInfo(), 3);
    EXPECT_EQ(field(0) + field(9) + field(12) + field(13), longName + "9there-") << "whole characters only";
    EXPECT_FALSE(fs::exists(portrait)) << "it is another person's";
    lay("b.cfg", "type = 4;");
    EXPECT_EQ(h_idcard_readInfo(), 4);
    EXPECT_EQ(field(0), "-");
    fs::rename(folder.file("cards"), folder.file("lifted"));
    fs::create_directory(folder.file("cards"));
    EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_LOOKING);
    fs::rename(folder.file("lifted/b.cfg"), folder.file("cards/b.cfg"));
    EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_READY) << "the same card, laid on again";
    fs::remove_all(folder.file("cards"));
    EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_NONE);
    EXPECT_EQ(h_idcard_openDevice(), HIDCARD_NO_READER);
}

TEST_F(DeskCards, WhatIsNoCardIsTold)
{
    const std::pair<const char*, const char*> wrong[] = {
        {"type = 0;\nname = 7;", "a.cfg:2: name must be a text"},
        {"type = -1;", "a.cfg:1: type must be a number"},
        {"type = 10;", "a.cfg:1: type must be a number from 0 to 9\n"},
        {"nmae = \"x\";", "a.cfg:1: nmae is not known"},
        {"type = ", "a.cfg:1: syntax error"}};
    for (const auto& [text, why] : wrong) {
        lay("a.cfg", text);
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(h_idcard_readInfo(), HIDCARD_READ_FAILED);
        EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::HasSubstr(why));
        EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_UNREADABLE);
    }
    lay("a.cfg", "name = \"x\"; picture = \"a.cfg\";");
    EXPECT_EQ(h_idcard_readInfo(), 0) << "the texts count";
    EXPECT_FALSE(fs::exists(portrait));
}

// The next state of a picture's file, as a caller of the library gets it.
#include "Codec.h"
#include "MadePages.h"
#include "Pixels.h"
#include "TempDir.h"
#include "mirvakcamera.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include <cmath>
#include <filesystem>

namespace {

class PictureFile : public ::testing::Test
{
protected:
    /// Four fields of colour, each a quarter of the picture.
    std::string save(const char* name, cv::Size size, double dpi = 300) const
    {
        mirvak::Image image;
        image.dpi = dpi;
        image.pixels.create(size, CV_8UC3);
        const cv::Scalar colours[]{{200, 0, 0}, {0, 200, 0}, {0, 0, 200}, {200, 200, 200}};
        for (int i = 0; i < 4; ++i)
            image.pixels(cv::Rect(i % 2 * size.width / 2,
                                  i / 2 * size.height / 2,
                                  (size.width + 1) / 2,
                                  (size.height + 1) / 2)) = colours[i];
        return save(name, image);
    }
    std::string save(const char* name, const mirvak::Image& image) const
    {
        EXPECT_EQ(mirvak::writeImage(dir.file(name), image, 95), mirvak::WriteResult::ok);
        return dir.file(name);
    }
    mirvak::Image read(const std::string& path) const
    {
        const auto image = mirvak::readImage(path);
        EXPECT_TRUE(image.has_value()) << path;
        return image.value_or(mirvak::Image());
    }
    int turn(const std::string& from, const std::string& target, int quarters) const
    {
        return MirvakCamera::MirvakPicture_Turn(from.c_str(), target.c_str(), quarters);
    }

    TempDir dir;
    const std::string to = dir.file(".new.tmp");
};

} // namespace

TEST_F(PictureFile, IsTurnedWithoutLossWhereItsBlocksAreWhole)
{
    for (const cv::Size size : {cv::Size(64, 48), cv::Size(61, 47)}) {
        for (const char* name : {"a.jpg", "a.png", "a.bmp"}) {
            const std::string path = save(name, size);
            const mirvak::Image before = read(path);
            const auto rights = std::filesystem::perms(size.width == 64 ? 0600
                                                       : name[2] == 'j' ? 0640
                                                                        : 0644);
            std::filesystem::permissions(path, rights);
            ASSERT_EQ(turn(path, to, 1), MIRVAK_OK);
            EXPECT_EQ(std::filesystem::status(to).permissions(), rights) << "others gain no right by an edit";
            const mirvak::Image turned = read(to);
            cv::Mat expected;
            cv::rotate(before.pixels, expected, cv::ROTATE_90_CLOCKWISE);
            EXPECT_LT(difference(turned.pixels, expected, cv::NORM_L1) / double(expected.total()), 8)
                << name << ": more than the colour that a JPEG halves at the edges of the fields";
            EXPECT_NEAR(turned.dpi, 300, 0.5);
            const std::string back = dir.file(name) + ".jpg";
            std::filesystem::rename(to, back);
            ASSERT_EQ(turn(back, to, -1), MIRVAK_OK);
            if (size.width == 64 && name[2] == 'j') {
                EXPECT_EQ(difference(read(to).pixels, before.pixels), 0) << "there and back";
            }
            EXPECT_EQ(difference(read(path).pixels, before.pixels), 0) << "the old file stays";
            for (const std::string& file : {path, to, back})
                std::filesystem::remove(file);
        }
    }
}

TEST_F(PictureFile, TurnedItsPixelsAreNotSaidToBeHighWhereTheyWereWide)
{
    mirvak::Bytes fax = mirvak::readFile(save("a.jpg", {64, 48}, 100)).value_or(mirvak::Bytes());
    ASSERT_GT(fax.size(), 18U);
    fax[17] = 200; // dots per inch, down
    ASSERT_EQ(turn(dir.write("fax.jpg", fax), to, 1), MIRVAK_OK);
    const mirvak::Bytes turned = mirvak::readFile(to).value_or(mirvak::Bytes());
    ASSERT_GT(turned.size(), 18U);
    EXPECT_FALSE(turned[15] == 100 && turned[17] == 200) << "across and down as before the turn";
    EXPECT_EQ(read(to).pixels.size(), cv::Size(48, 64));
}

TEST_F(PictureFile, IsCutByItsCornersAndStraightened)
{
    const std::string path = save("a.png", {80, 60}, 150);
    const MirvakPointF corners[4]{{0.5F, 0}, {1, 0}, {1, 0.5F}, {0.5F, 0.5F}};
    ASSERT_EQ(MirvakCamera::MirvakPicture_Cut(path.c_str(), to.c_str(), corners), MIRVAK_OK);
    const mirvak::Image cut = read(to);
    EXPECT_EQ(cut.pixels.size(), cv::Size(40, 30));
    EXPECT_EQ(otherThan(cut.pixels, {0, 200, 0}), cv::Rect()) << "the upper right field and nothing else";
    EXPECT_NEAR(cut.dpi, 150, 0.5);
    EXPECT_EQ(MirvakCamera::MirvakPicture_Cut(path.c_str(), to.c_str(), corners), MIRVAK_EXISTS);

    mirvak::Image desk;
    desk.pixels = made::desk({1200, 900}, made::Desk::dark);
    const made::Corners page = made::placed({620, 430}, {700, 460}, 7);
    made::lay(desk.pixels, made::textPage({700, 460}, 24), page);
    const std::string scan = save("scan.png", desk);
    MirvakPointF found[4];
    ASSERT_EQ(MirvakCamera::MirvakPicture_FindPage(scan.c_str(), found), MIRVAK_OK);
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(double(found[i].x) * 1200 - 0.5, page[i].x, 2);
        EXPECT_NEAR(double(found[i].y) * 900 - 0.5, page[i].y, 2);
    }
    const std::string straight = dir.file(".straight.tmp");
    ASSERT_EQ(MirvakCamera::MirvakPicture_Straighten(scan.c_str(), straight.c_str(), 15), MIRVAK_OK);
    EXPECT_NEAR(read(straight).pixels.cols, 700 - 30, 4);
    EXPECT_NEAR(read(straight).pixels.rows, 460 - 30, 4);
}

TEST_F(PictureFile, WhatMakesNoSenseLeavesNoFile)
{
    const std::string path = save("a.jpg", {64, 48});
    const std::string broken = dir.write("b.jpg", "\xff\xd8\xff no picture");
    EXPECT_EQ(turn(broken, to, 1), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(turn(dir.file("none.png"), to, 1), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(MirvakCamera::MirvakPicture_Turn(nullptr, to.c_str(), 1), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(turn(path, dir.file("no folder/x"), 1), MIRVAK_IO_ERROR);
    const MirvakPointF crossed[4]{{0, 0}, {1, 1}, {1, 0}, {0, 1}}, left[4]{{0, 0}, {0, 1}, {1, 1}, {1, 0}},
        none[4]{{NAN, 0}, {1, 0}, {1, 1}, {0, 1}}, far[4]{{0, 0}, {900, 0}, {900, 900}, {0, 900}},
        dented[4]{{0, 0}, {1, 0}, {0.3F, 0.3F}, {0, 1}};
    for (const auto* corners : {&crossed, &left, &none, &far, &dented})
        EXPECT_EQ(MirvakCamera::MirvakPicture_Cut(path.c_str(), to.c_str(), *corners), MIRVAK_BAD_ARGUMENT);
    mirvak::Image plain;
    plain.pixels = cv::Mat(300, 400, CV_8UC3, cv::Scalar::all(255));
    const std::string blank = save("blank.png", plain);
    EXPECT_EQ(MirvakCamera::MirvakPicture_Straighten(blank.c_str(), to.c_str(), 15), MIRVAK_NOT_FOUND);
    EXPECT_FALSE(std::filesystem::exists(to));
}

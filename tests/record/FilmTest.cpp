// Films made slot by slot, judged by other programs.
#include "Film.h"
#include "Command.h"
#include "DiskFullAt.h"
#include "FilmTools.h"
#include "FitFrame.h"
#include "PlainCopy.h"
#include "TempDir.h"
#include "Trouble.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using mirvak::Film;
using mirvak::VideoFormat;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Not;

namespace {

bool madePlain(const std::string& path, int film, bool cancelled = false, int* percent = nullptr)
{
    mirvak::CopyWatch watch;
    watch.cancelled = cancelled;
    const bool isMade = mirvak::makePlain(path, film, watch);
    if (percent)
        *percent = watch.percent;
    return isMade;
}

constexpr VideoFormat small{64, 48, 30};
constexpr VideoFormat large{320, 240, 30};

struct FilmTest : ::testing::Test
{
    TempDir folder;
    std::string path = folder.file("one film.mp4");

    std::unique_ptr<Film> opened(const VideoFormat& format)
    {
        auto film = std::make_unique<Film>(path, format, mirvak::encoderChoices(false));
        EXPECT_TRUE(film->open()) << film->error();
        return film;
    }
};

TEST_F(FilmTest, ShowsEachFrameInItsSlot)
{
    auto film = opened(small);
    std::vector<int> expected;
    for (int slot = 0; slot < 75; ++slot) {
        const bool isNew = slot % 3 != 2;
        ASSERT_TRUE(isNew ? film->add(greyFrame(small, levelOf(slot)).data(), slot) : film->repeat(slot));
        expected.push_back(levelOf(isNew ? slot : slot - 1));
    }
    ASSERT_TRUE(film->close());
    auto facts = tools::filmFacts(path);
    EXPECT_EQ(facts["codec_name"] + " " + facts["pix_fmt"], "h264 yuv420p");
    EXPECT_EQ(facts["r_frame_rate"] + " " + facts["avg_frame_rate"], "30/1 30/1");
    EXPECT_EQ(facts["width"] + "x" + facts["height"], "64x48");
    EXPECT_EQ(facts["duration"], "2.500000");
    const std::vector<int> levels = tools::filmLevels(path, small);
    ASSERT_EQ(levels.size(), expected.size());
    for (size_t i = 0; i < levels.size(); ++i)
        EXPECT_NEAR(levels[i], expected[i], 3) << "frame " << i; // the next level is 9 away
}

TEST_F(FilmTest, AnEmptySlotShowsTheFrameBeforeItLonger)
{
    auto film = opened(small);
    for (const int slot : {0, 1, 4, 40, 95})
        ASSERT_TRUE(film->add(greyFrame(small, levelOf(slot)).data(), slot));
    ASSERT_TRUE(film->close());
    const std::vector<std::string> boxes = tools::boxesOf(path);
    EXPECT_EQ(std::count(boxes.begin(), boxes.end(), "moof"), 3) << "fragments grew with the empty slots";
    EXPECT_THAT(tools::filmSlots(path), ElementsAre(0, 1, 4, 40, 95));
    EXPECT_EQ(tools::filmFacts(path)["duration"], "3.200000");
    EXPECT_EQ(tools::filmComplaints(path), "");
}

TEST_F(FilmTest, ColoursComeBack)
{
    // Fields of 32 px: their middles lie outside of what coding and halved colours smear.
    const uint8_t colours[][3] = {{255, 255, 255},
                                  {0, 0, 0},
                                  {200, 30, 40},
                                  {30, 180, 50},
                                  {40, 50, 210},
                                  {230, 220, 60},
                                  {128, 128, 128}};
    constexpr int fields = 7, side = 32;
    constexpr VideoFormat format{fields * side, side, 30};
    Pixels rgb;
    for (int i = 0; i < format.width * format.height; ++i)
        rgb.insert(rgb.end(), colours[i % format.width / side], colours[i % format.width / side] + 3);
    auto film = opened(format);
    for (int slot = 0; slot < 5; ++slot)
        ASSERT_TRUE(film->add(rgb.data(), slot));
    ASSERT_TRUE(film->close());
    auto facts = tools::filmFacts(path);
    EXPECT_EQ(facts["color_space"] + " " + facts["color_range"], "bt709 tv");
    const Pixels frames = tools::filmFrames(path);
    ASSERT_EQ(frames.size(), rgb.size() * 5);
    for (int field = 0; field < fields; ++field) {
        const size_t at = size_t(side / 2 * format.width + field * side + side / 2) * 3;
        for (size_t channel = 0; channel < 3; ++channel) // two roundings to 220 levels, one of the coding
            EXPECT_NEAR(frames[at + channel], colours[field][channel], 5) << "field " << field;
    }
}

TEST(YuvFrame, ReadsNothingBeyondTheFrame)
{
    constexpr VideoFormat format{640, 480, 30};
    const size_t page = size_t(sysconf(_SC_PAGESIZE)), room = (format.frameBytes() + page - 1) / page * page;
    void* memory = mmap(nullptr, room + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto* end = static_cast<uint8_t*>(memory) + room;
    ASSERT_EQ(mprotect(end, page, PROT_NONE), 0);
    mirvak::YuvFrame frame(format);
    EXPECT_EQ(frame.convert(end - format.frameBytes()), 0);
    EXPECT_EQ(munmap(memory, room + page), 0);
}

TEST_F(FilmTest, AnOddSizeLosesItsLastColumnAndRow)
{
    constexpr VideoFormat odd{67, 49, 30};
    Pixels rgb = greyFrame(odd, 40);
    for (int y = 0; y < odd.height; ++y) // an upright edge leans when rows are taken for shorter
        std::fill_n(rgb.begin() + (y * odd.width + 32) * 3, (odd.width - 32) * 3, uint8_t(200));
    for (const int y : {46, 47}) // the last ones of the film
        std::fill_n(rgb.begin() + y * odd.width * 3, 32 * 3, uint8_t(160));
    auto film = opened(odd);
    ASSERT_TRUE(film->add(rgb.data(), 0));
    ASSERT_TRUE(film->close());
    const Pixels frame = tools::filmFrames(path);
    ASSERT_EQ(frame.size(), 66u * 48 * 3);
    for (int y = 0; y < 48; ++y) {
        EXPECT_NEAR(frame[(y * 66 + 28) * 3], y < 46 ? 40 : 160, 12) << "row " << y;
        EXPECT_NEAR(frame[(y * 66 + 36) * 3], 200, 12) << "row " << y;
    }
}

TEST_F(FilmTest, PlaysAfterTheProcessWasKilled)
{
    const pid_t child = fork();
    if (child == 0) {
        auto film = opened(large);
        for (int slot = 0; slot < 100; ++slot)
            film->add(greyFrame(large, 100).data(), slot); // a picture at rest begins no fragment by itself
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(tools::filmComplaints(path), "");
    EXPECT_GE(tools::filmSlots(path).size(), 60u) << "more than its last second was lost";
}

TEST_F(FilmTest, TakesTheFirstEncoderThatOpensAndNoFileWithoutOne)
{
    Film second(
        path, small, {{"no_such_encoder", ""}, {"libx264", "no such preset"}, {"libx264", "ultrafast"}});
    EXPECT_TRUE(second.open());
    EXPECT_EQ(second.encoderName(), "libx264 ultrafast");
    EXPECT_TRUE(second.close());
    folder.write("one film.mp4", "an older file");
    Film none(path, small, {{"no_such_encoder", ""}});
    EXPECT_FALSE(none.open());
    EXPECT_FALSE(none.hasFileError());
    EXPECT_EQ(folder.content("one film.mp4"), "an older file") << "lost for nothing";
}

TEST_F(FilmTest, AnEncoderThatFailsAtOnceIsReplacedAndOneThatFailsLaterIsNot)
{
    const std::vector<mirvak::EncoderChoice> choices{{"libx264", "superfast"}, {"libx264", "ultrafast"}};
    for (const int failing : {0, 50}) {
        const Trouble trouble;
        Trouble::onEncode = [failing, picture = 0]() mutable { return picture++ != failing; };
        std::filesystem::remove(path);
        Film film(path, small, choices);
        ASSERT_TRUE(film.open());
        int slot = 0;
        while (slot < 60 && film.add(greyFrame(small, levelOf(slot)).data(), slot))
            ++slot;
        EXPECT_EQ(slot, failing == 0 ? 60 : failing);
        EXPECT_EQ(film.close(), failing == 0);
        EXPECT_EQ(film.encoderName(), failing == 0 ? "libx264 ultrafast" : "libx264 superfast");
        EXPECT_EQ(tools::filmComplaints(path), "");
        EXPECT_GE(tools::filmSlots(path).size(), failing == 0 ? 60U : 30U);
    }
}

TEST(FitFrame, FineLinesKeepTheirShareOfTheLight)
{
    constexpr VideoFormat film{16, 12, 30};
    Pixels lines; // each fourth column is white
    for (int i = 0; i < 64 * 48; ++i)
        lines.insert(lines.end(), 3, i % 4 == 0 ? 255 : 0);
    Pixels fitted(film.frameBytes());
    mirvak::fitFrame(lines.data(), 64, 48, film, fitted.data());
    EXPECT_THAT(fitted, Each(::testing::AllOf(::testing::Ge(63), ::testing::Le(64))));
}

TEST_F(FilmTest, NeverTouchesAFileThatHasItsName)
{
    folder.write("one film.mp4", "an older file");
    {
        Film film(path, small, mirvak::encoderChoices(false));
        EXPECT_FALSE(film.open());
        EXPECT_TRUE(film.isNameTaken());
        film.close();
    }
    EXPECT_EQ(folder.content("one film.mp4"), "an older file");
    std::filesystem::remove(path);
    auto film = opened(small);
    std::filesystem::remove(path);
    folder.write("one film.mp4", "a newer file");
    EXPECT_TRUE(film->close()) << "without a frame";
    EXPECT_EQ(folder.content("one film.mp4"), "a newer file");
}

TEST_F(FilmTest, ThePlainCopyHasTheSameFramesBehindItsIndex)
{
    auto film = opened(small);
    for (const int slot : {0, 1, 2, 5, 31, 32, 70})
        film->add(greyFrame(small, levelOf(slot)).data(), slot);
    ASSERT_TRUE(film->close());
    EXPECT_THAT(tools::boxesOf(path), Contains("moof"));
    const Pixels before = tools::filmFrames(path);
    ASSERT_TRUE(madePlain(path, film->takeFile().get()));
    EXPECT_THAT(tools::boxesOf(path), ElementsAre("ftyp", "moov", "free", "mdat"));
    EXPECT_EQ(tools::filmFrames(path), before);
    EXPECT_THAT(tools::filmSlots(path), ElementsAre(0, 1, 2, 5, 31, 32, 70));
    EXPECT_EQ(tools::filmFacts(path)["duration"], "2.366667");
    EXPECT_EQ(folder.names().size(), 1U);
}

TEST_F(FilmTest, TheFragmentsStayWhenThePlainCopyFails)
{
    auto film = opened(large);
    for (int slot = 0; slot < 40; ++slot)
        film->add(noiseFrame(large, unsigned(slot)).data(), slot);
    ASSERT_TRUE(film->close());
    const mirvak::UniqueFd file = film->takeFile();
    testing::internal::CaptureStderr();
    int percent = 0;
    {
        const DiskFullAt limit(std::filesystem::file_size(path) / 2);
        EXPECT_FALSE(madePlain(path, file.get(), false, &percent));
    }
    EXPECT_TRUE(percent > 10 && percent < 50)
        << percent << " when half of the packets, half of the work, are copied";
    EXPECT_FALSE(madePlain(path, file.get(), true)) << "cancelled";
    EXPECT_FALSE(madePlain(folder.file("gone.mp4"), file.get()));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 3) << said;
    EXPECT_EQ(folder.names().size(), 1U);
    EXPECT_EQ(tools::filmSlots(path).size(), 40u);
    EXPECT_THAT(tools::boxesOf(path), Contains("moof"));
}

TEST_F(FilmTest, NoPlainCopyIsBegunWithoutRoomForIt)
{
    auto film = opened(small);
    ASSERT_TRUE(film->add(greyFrame(small, 100).data(), 0) && film->close());
    const mirvak::UniqueFd file = film->takeFile();
    // A hole at its end takes no room, but would in a copy.
    const auto size = std::filesystem::file_size(path);
    std::filesystem::resize_file(path, std::filesystem::space(folder.path()).capacity);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(madePlain(path, file.get(), true)); // given up at once, should it begin all the same
    EXPECT_THAT(testing::internal::GetCapturedStderr(), ::testing::HasSubstr("no room"));
    std::filesystem::resize_file(path, size);
    EXPECT_THAT(tools::boxesOf(path), Contains("moof"));
    EXPECT_EQ(folder.names().size(), 1U);
}

TEST_F(FilmTest, ThePlainCopyReplacesNothingThatHasTakenTheFilmsName)
{
    auto film = opened(small);
    ASSERT_TRUE(film->add(greyFrame(small, 100).data(), 0) && film->close());
    const mirvak::UniqueFd file = film->takeFile();
    const Trouble trouble;
    const std::string moved = folder.file("moved.mp4");
    const auto takeName = [&] {
        std::filesystem::rename(path, moved);
        folder.write("one film.mp4", "a newer file");
    };
    Trouble::onSync = takeName; // at the last moment
    EXPECT_FALSE(madePlain(path, file.get()));
    Trouble::onSync = nullptr; // long before
    EXPECT_FALSE(madePlain(path, file.get()));
    EXPECT_EQ(folder.content("one film.mp4"), "a newer file");
    EXPECT_EQ(tools::filmSlots(moved).size(), 1u);
    EXPECT_EQ(folder.names().size(), 2U);
}

} // namespace

// One recording with its thread, by a clock that the test moves on.
#include "Recorder.h"
#include "DiskFullAt.h"
#include "FilmTools.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>

using mirvak::Recorder;
using mirvak::VideoFormat;
using std::chrono::milliseconds;

namespace {

constexpr VideoFormat format{320, 240, 30};

struct RecorderTest : ::testing::Test
{
    TempDir folder;
    std::string path = folder.file("film.mp4");
    std::atomic<int64_t> time{0}; ///< nanoseconds
    Recorder recorder{
        path, format, mirvak::encoderChoices(false), [this] { return std::chrono::nanoseconds(time); }};
    int slot = 0;

    /// Lets two frames arrive in their slots and waits until the film is there.
    MirvakRecordResult filmTwo()
    {
        MirvakRecordResult result = MIRVAK_RECORD_OK;
        for (int i = 0; i < 2; ++i, ++slot) {
            time = slot * int64_t(1'000'000'000) / 30 + 1'000'000;
            result = recorder.write(noiseFrame(format, unsigned(slot)).data(), format.frameBytes());
        }
        while (recorder.result() == MIRVAK_RECORD_OK && recorder.counts().written < slot - 1)
            std::this_thread::sleep_for(milliseconds(1));
        return result;
    }
    /// Films until the recording ends by itself and checks that it says so once.
    void filmToTheEnd()
    {
        testing::internal::CaptureStderr();
        MirvakRecordResult result = MIRVAK_RECORD_OK;
        while (result == MIRVAK_RECORD_OK && slot < 300)
            result = filmTwo();
        EXPECT_EQ(result, MIRVAK_RECORD_IO_ERROR);
        EXPECT_EQ(recorder.write(noiseFrame(format, 1).data(), format.frameBytes()), MIRVAK_RECORD_IO_ERROR);
        EXPECT_EQ(recorder.stop(), MIRVAK_RECORD_IO_ERROR);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    }
};

TEST_F(RecorderTest, FilmsByItsClock)
{
    ASSERT_EQ(recorder.start(), MIRVAK_RECORD_OK);
    while (slot < 20)
        ASSERT_EQ(filmTwo(), MIRVAK_RECORD_OK);
    EXPECT_EQ(recorder.write(noiseFrame(format, 1).data(), 10), MIRVAK_RECORD_WRONG_SIZE);
    time = milliseconds(1500).count() * 1'000'000;
    EXPECT_EQ(recorder.stop(), MIRVAK_RECORD_OK);
    EXPECT_EQ(recorder.write(noiseFrame(format, 1).data(), format.frameBytes()), MIRVAK_RECORD_NOT_RECORDING);
    EXPECT_EQ(recorder.counts().written, 45);
    EXPECT_EQ(recorder.counts().repeated, 25);
    EXPECT_EQ(recorder.counts().dropped, 0);
    EXPECT_EQ(recorder.refused(), 1);
    EXPECT_EQ(tools::filmFacts(path)["duration"], "1.500000");
    EXPECT_EQ(tools::filmFacts(path)["nb_read_frames"], "45");
}

TEST_F(RecorderTest, EndsByItselfWhenTheDiskIsFull)
{
    ASSERT_EQ(recorder.start(), MIRVAK_RECORD_OK);
    const DiskFullAt limit(2'000'000);
    filmToTheEnd();
    EXPECT_TRUE(recorder.plays());
    EXPECT_EQ(tools::filmComplaints(path), "");
    EXPECT_GE(tools::filmSlots(path).size(), 30u);
}

TEST_F(RecorderTest, EndsByItselfWhenItsFolderVanishes)
{
    ASSERT_EQ(recorder.start(), MIRVAK_RECORD_OK);
    filmTwo();
    std::filesystem::remove_all(folder.path());
    filmToTheEnd();
    EXPECT_LE(slot, 70) << "not found out within a second or two";
}

TEST_F(RecorderTest, DoesNotStartWhereNoFileCanBe)
{
    const std::string nowhere = folder.file("missing/film.mp4");
    for (const std::string& place : {nowhere, folder.path(), std::string("/proc/film.mp4")}) {
        testing::internal::CaptureStderr();
        Recorder other(place, format, mirvak::encoderChoices(false));
        EXPECT_EQ(other.start(), MIRVAK_RECORD_IO_ERROR) << place;
        EXPECT_NE(testing::internal::GetCapturedStderr().find(place), std::string::npos);
    }
    Recorder none(path, format, {});
    EXPECT_EQ(none.start(), MIRVAK_RECORD_NO_ENCODER);
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace

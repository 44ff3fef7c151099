// The library as the program uses it.
#include "DiskFullAt.h"
#include "FilmTools.h"
#include "TempDir.h"
#include "Trouble.h"
#include "mirvakrecord.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <future>
#include <sstream>
#include <thread>

namespace {

constexpr mirvak::VideoFormat format{160, 120, 30};

struct RecordTest : ::testing::Test
{
    TempDir folder;
    std::string path = folder.file("film.mp4");
    Pixels frame = greyFrame(format, 90);
    MirvakRecord record;

    int start() { return record.MirvakRecord_Start(path.c_str(), format.width, format.height, 30, 2, 0); }
    int write() { return record.MirvakRecord_Write(frame.data(), static_cast<int>(frame.size())); }
    int written()
    {
        int frames = 0, repeated = 0, dropped = 0;
        record.MirvakRecord_GetCounts(frames, repeated, dropped);
        return frames;
    }
    /// Until the film has as many frames.
    void film(int frames)
    {
        while (written() < frames) {
            ASSERT_EQ(write(), MIRVAK_RECORD_OK);
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
};

TEST_F(RecordTest, FilmsOneAfterTheOtherAndReplacesNone)
{
    for (const char* name : {"film.mp4", "next.mp4"}) {
        path = folder.file(name);
        ASSERT_EQ(start(), MIRVAK_RECORD_OK);
        film(5);
        EXPECT_EQ(start(), MIRVAK_RECORD_BUSY);
        EXPECT_EQ(write(), MIRVAK_RECORD_OK) << "the first recording goes on";
        EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_OK);
        EXPECT_EQ(tools::filmSlots(path).size(), size_t(written()));
        EXPECT_EQ(start(), MIRVAK_RECORD_EXISTS);
    }
    EXPECT_EQ(tools::filmComplaints(folder.file("film.mp4")), "");
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_NOT_RECORDING);
    EXPECT_EQ(write(), MIRVAK_RECORD_NOT_RECORDING);
}

/// A size and where it lies in the film's 160 x 120.
struct Fitted
{
    int width, height;
    int left, top, right, bottom; ///< of the picture, px
};

class RecordSizes : public RecordTest, public ::testing::WithParamInterface<Fitted>
{
};

TEST_P(RecordSizes, AreFittedIntoTheFilm)
{
    const Fitted size = GetParam();
    Pixels halves; // light above dark
    for (int i = 0; i < size.width * size.height; ++i)
        halves.insert(halves.end(), 3, i < size.width * size.height / 2 ? 220 : 120);
    const auto writeHalves = [&](size_t bytes) {
        return record.MirvakRecord_WriteScaled(
            halves.data(), static_cast<int>(bytes), size.width, size.height);
    };
    ASSERT_EQ(start(), MIRVAK_RECORD_OK);
    EXPECT_EQ(writeHalves(halves.size() - 3), MIRVAK_RECORD_WRONG_SIZE);
    film(5); // leaves nothing of its frames
    for (const int before = written(); written() < before + 5;)
        ASSERT_EQ(writeHalves(halves.size()), MIRVAK_RECORD_OK);
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_OK);
    Pixels frames = tools::filmFrames(path);
    ASSERT_GE(frames.size(), frame.size());
    frames.erase(frames.begin(), frames.end() - static_cast<std::ptrdiff_t>(frame.size()));
    constexpr int blur = 6; // px: halved colours and the coding's blocks
    const int middle = (size.top + size.bottom) / 2;
    for (int y = 0; y < format.height; ++y) {
        for (int x = 0; x < format.width; ++x) {
            const bool isInside = x >= size.left && x < size.right && y >= size.top && y < size.bottom;
            const int expected = !isInside ? 0 : y < middle ? 220 : 120;
            const int toEdge = std::min({std::abs(x - size.left),
                                         std::abs(x - size.right),
                                         std::abs(y - size.top),
                                         std::abs(y - size.bottom),
                                         std::abs(y - middle)});
            const int shown = frames[size_t(y * format.width + x) * 3];
            ASSERT_TRUE(toEdge <= blur || std::abs(shown - expected) <= 12)
                << shown << " for " << expected << " at " << x << ", " << y;
        }
    }
}
INSTANTIATE_TEST_SUITE_P(Sizes,
                         RecordSizes,
                         ::testing::Values(Fitted{160, 120, 0, 0, 160, 120},
                                           Fitted{640, 480, 0, 0, 160, 120},
                                           Fitted{120, 160, 35, 0, 125, 120},
                                           Fitted{320, 120, 0, 30, 160, 90},
                                           Fitted{40, 40, 20, 0, 140, 120}));

TEST_F(RecordTest, TheFileIsPlainWhenTheObjectIsGone)
{
    {
        MirvakRecord other;
        ASSERT_EQ(other.MirvakRecord_Start(path.c_str(), format.width, format.height, 30, 2, 0),
                  MIRVAK_RECORD_OK);
        ASSERT_EQ(other.MirvakRecord_Write(frame.data(), static_cast<int>(frame.size())), MIRVAK_RECORD_OK);
    } // stopped by the destructor
    EXPECT_THAT(tools::boxesOf(path), ::testing::ElementsAre("ftyp", "moov", "free", "mdat"));
    EXPECT_EQ(tools::filmComplaints(path), "");
}

TEST_F(RecordTest, RefusesWhatItCannotFilm)
{
    const auto starts = [&](const char* at, int width, int height, int rate, int mode, int flags) {
        return record.MirvakRecord_Start(at, width, height, rate, mode, flags) != MIRVAK_RECORD_BAD_ARGUMENT;
    };
    const char* at = path.c_str();
    EXPECT_FALSE(starts(nullptr, 160, 120, 30, 2, 0) || starts("", 160, 120, 30, 2, 0));
    EXPECT_FALSE(starts(at, 15, 120, 30, 2, 0) || starts(at, 160, 4097, 30, 2, 0) ||
                 starts(at, -160, 120, 30, 2, 0));
    EXPECT_FALSE(starts(at, 160, 120, 0, 2, 0) || starts(at, 160, 120, 61, 2, 0));
    EXPECT_FALSE(starts(at, 160, 120, 30, 1, 0) || starts(at, 160, 120, 30, 2, 1));
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_NOT_RECORDING);
    EXPECT_TRUE(starts(at, 4096, 16, 60, 2, 0)) << "the last that can be filmed";
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_NO_FRAME);

    ASSERT_EQ(start(), MIRVAK_RECORD_OK);
    EXPECT_EQ(record.MirvakRecord_Write(nullptr, static_cast<int>(frame.size())), MIRVAK_RECORD_BAD_ARGUMENT);
    for (const int bytes : {-1, 0, static_cast<int>(frame.size()) - 1, static_cast<int>(frame.size()) + 1})
        EXPECT_EQ(record.MirvakRecord_Write(frame.data(), bytes), MIRVAK_RECORD_WRONG_SIZE) << bytes;
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_NO_FRAME);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    int number = 1;
    EXPECT_EQ(record.MirvakRecord_GetCounts(number, number, number), MIRVAK_RECORD_OK) << "nothing failed";
    EXPECT_EQ(number, 0);
}

TEST_F(RecordTest, TheCopyOfALongFilmCanBeWatchedAndStopped)
{
    int percent = 0;
    EXPECT_EQ(record.MirvakRecord_GetCopying(percent), MIRVAK_RECORD_NOT_RECORDING);
    EXPECT_EQ(record.MirvakRecord_StopCopying(), MIRVAK_RECORD_OK);
    const Trouble trouble;
    std::promise<void> answer;
    Trouble::onSync = [answered = answer.get_future().share()] { answered.wait(); };
    ASSERT_EQ(start(), MIRVAK_RECORD_OK);
    film(2);
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_OK) << "does not wait for the copy";
    EXPECT_EQ(record.MirvakRecord_GetCopying(percent), MIRVAK_RECORD_OK);
    EXPECT_GE(percent, 0);
    EXPECT_EQ(record.MirvakRecord_StopCopying(), MIRVAK_RECORD_OK);
    answer.set_value();
    while (record.MirvakRecord_GetCopying(percent) == MIRVAK_RECORD_OK && percent >= 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(percent, -1);
    EXPECT_THAT(tools::boxesOf(path), ::testing::Contains("moof")) << "copied all the same";
}

TEST_F(RecordTest, AMachineThatWasLateGetsTheCheapEncoderAndTheReportSaysWhatCameOfIt)
{
    const Trouble trouble;
    std::promise<void> goOn;
    Trouble::onEncode = [released = goOn.get_future().share()] { return released.wait(), true; };
    ::testing::internal::CaptureStdout();
    ASSERT_EQ(start(), MIRVAK_RECORD_OK);
    int frames = 0, repeated = 0, dropped = 0;
    while (dropped == 0) {
        ASSERT_EQ(write(), MIRVAK_RECORD_OK);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        record.MirvakRecord_GetCounts(frames, repeated, dropped);
    }
    goOn.set_value();
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_OK);
    record.MirvakRecord_GetCounts(frames, repeated, dropped);
    path = folder.file("next.mp4");
    ASSERT_EQ(start(), MIRVAK_RECORD_OK);
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_NO_FRAME);
    const std::string said = ::testing::internal::GetCapturedStdout();
    EXPECT_LT(said.find("superfast"), said.find("ultrafast")) << said;
    EXPECT_NE(said.find("ultrafast"), std::string::npos) << said;
    std::ostringstream report;
    report << "record: " << frames << " frames, " << repeated << " repeated, " << dropped
           << " dropped, 0 ref";
    EXPECT_NE(said.find(report.str()), std::string::npos) << said;
}

TEST_F(RecordTest, EveryCallTellsThatTheRecordingHasFailed)
{
    ASSERT_EQ(start(), MIRVAK_RECORD_OK);
    const DiskFullAt limit(100);
    while (write() == MIRVAK_RECORD_OK)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    int number = 1;
    const auto expectTold = [&] {
        EXPECT_EQ(record.MirvakRecord_GetLength(number), MIRVAK_RECORD_IO_ERROR);
        EXPECT_EQ(record.MirvakRecord_GetCounts(number, number, number), MIRVAK_RECORD_IO_ERROR);
    };
    expectTold();
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_IO_ERROR);
    expectTold();
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(RecordTest, AFilmThatTheDiskBrokeOffPlaysAndIsNotRewritten)
{
    ASSERT_EQ(start(), MIRVAK_RECORD_OK);
    {
        const DiskFullAt limit(300'000); // of film, about a second and a half
        unsigned seed = 0;
        do
            frame = noiseFrame(format, ++seed);
        while (write() == MIRVAK_RECORD_OK);
        EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_IO_ERROR);
    }
    int percent = 0;
    while (record.MirvakRecord_GetCopying(percent) == MIRVAK_RECORD_OK)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(tools::filmComplaints(path), "");
    EXPECT_GE(tools::filmSlots(path).size(), 10U);
    EXPECT_THAT(tools::boxesOf(path), ::testing::Contains("moof"));
}

TEST_F(RecordTest, StopAndWriteMayMeet)
{
    std::atomic<bool> done{false};
    std::atomic<int> taken{0};
    std::thread camera([&] {
        while (!done) {
            const int result = write();
            EXPECT_TRUE(result == MIRVAK_RECORD_OK || result == MIRVAK_RECORD_NOT_RECORDING) << result;
            taken += result == MIRVAK_RECORD_OK;
        }
    });
    for (int i = 0; i < 15; ++i) {
        taken = 0;
        ASSERT_EQ(start(), MIRVAK_RECORD_OK);
        while (i % 3 != 0 && taken < i)
            std::this_thread::yield();
        const int result = record.MirvakRecord_Stop();
        EXPECT_TRUE(result == MIRVAK_RECORD_OK || result == MIRVAK_RECORD_NO_FRAME) << result;
        EXPECT_EQ(std::filesystem::exists(path), result == MIRVAK_RECORD_OK);
        std::filesystem::remove(path);
    }
    done = true;
    camera.join();
}

} // namespace

// The library as the program uses it.
#include "FilmTools.h"
#include "TempDir.h"
#include "mirvakrecord.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
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

TEST_F(RecordTest, FilmsOneAfterTheOtherUnderTheSameName)
{
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(start(), MIRVAK_RECORD_OK);
        film(5);
        EXPECT_EQ(start(), MIRVAK_RECORD_BUSY);
        EXPECT_EQ(write(), MIRVAK_RECORD_OK) << "the first recording goes on";
        EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_OK);
        EXPECT_EQ(tools::filmSlots(path).size(), size_t(written()));
    }
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_NOT_RECORDING);
    EXPECT_EQ(write(), MIRVAK_RECORD_NOT_RECORDING);
}

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

    ASSERT_EQ(start(), MIRVAK_RECORD_OK);
    EXPECT_EQ(record.MirvakRecord_Write(nullptr, static_cast<int>(frame.size())), MIRVAK_RECORD_BAD_ARGUMENT);
    for (const int bytes : {-1, 0, static_cast<int>(frame.size()) - 1, static_cast<int>(frame.size()) + 1})
        EXPECT_EQ(record.MirvakRecord_Write(frame.data(), bytes), MIRVAK_RECORD_WRONG_SIZE) << bytes;
    EXPECT_EQ(record.MirvakRecord_Stop(), MIRVAK_RECORD_NO_FRAME);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
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

// One recording with its thread, by a clock that the test moves on.
#include "Recorder.h"
#include "DiskFullAt.h"
#include "FilmTools.h"
#include "TempDir.h"
#include "Trouble.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <future>
#include <thread>

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
    const std::shared_ptr<Recorder> owner = std::make_shared<Recorder>(
        path, format, mirvak::encoderChoices(false), [this] { return std::chrono::nanoseconds(time); });
    Recorder& recorder = *owner;
    int slot = 0;
    bool isNoise = true;

    ~RecorderTest() override { recorder.stop(); }

    /// Lets two frames arrive in their slots and waits until the film is there.
    MirvakRecordResult filmTwo()
    {
        MirvakRecordResult result = MIRVAK_RECORD_OK;
        for (int i = 0; i < 2; ++i, ++slot) {
            time = slot * int64_t(1'000'000'000) / 30 + 1'000'000;
            const Pixels rgb =
                isNoise ? noiseFrame(format, unsigned(slot)) : greyFrame(format, levelOf(slot));
            result = recorder.write(rgb.data(), rgb.size());
        }
        while (recorder.result() == MIRVAK_RECORD_OK && recorder.counts().written < slot - 1)
            std::this_thread::sleep_for(milliseconds(1));
        return result;
    }
    /// Films until the recording ends by itself and checks that it says so once.
    void filmToTheEnd(MirvakRecordResult why = MIRVAK_RECORD_IO_ERROR)
    {
        testing::internal::CaptureStderr();
        MirvakRecordResult result = MIRVAK_RECORD_OK;
        while (result == MIRVAK_RECORD_OK && slot < 300)
            result = filmTwo();
        EXPECT_EQ(result, why);
        EXPECT_EQ(recorder.result(), why);
        EXPECT_EQ(recorder.write(noiseFrame(format, 1).data(), format.frameBytes()), why);
        EXPECT_EQ(recorder.stop(), why);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    }
    void expectFilm(size_t leastFrames) const
    {
        EXPECT_EQ(tools::filmComplaints(path), "");
        const std::vector<int> slots = tools::filmSlots(path);
        ASSERT_GE(slots.size(), leastFrames);
        EXPECT_EQ(recorder.length().count(), (slots.back() + 1) * 1000 / 30) << "not what the file shows";
    }
};

TEST_F(RecorderTest, FilmsByItsClock)
{
    isNoise = false;
    ASSERT_EQ(recorder.start(), MIRVAK_RECORD_OK);
    while (slot < 20)
        ASSERT_EQ(filmTwo(), MIRVAK_RECORD_OK);
    EXPECT_EQ(recorder.write(noiseFrame(format, 1).data(), 10), MIRVAK_RECORD_WRONG_SIZE);
    time = milliseconds(1500).count() * 1'000'000;
    EXPECT_EQ(recorder.stop(), MIRVAK_RECORD_OK);
    EXPECT_EQ(recorder.write(noiseFrame(format, 1).data(), format.frameBytes()), MIRVAK_RECORD_NOT_RECORDING);
    EXPECT_EQ(recorder.length(), milliseconds(1500));
    EXPECT_EQ(recorder.counts().written, 45);
    EXPECT_EQ(recorder.counts().repeated, 25);
    EXPECT_EQ(recorder.counts().dropped, 0);
    EXPECT_EQ(recorder.refused(), 1);
    EXPECT_EQ(tools::filmFacts(path)["duration"], "1.500000");
    const std::vector<int> levels = tools::filmLevels(path, format);
    ASSERT_EQ(levels.size(), 45u);
    for (int i = 0; i < 45; ++i)
        EXPECT_NEAR(levels[size_t(i)], levelOf(std::min(i, 19)), 3) << "frame " << i;
}

TEST_F(RecorderTest, EndsByItselfWhenTheDiskIsFull)
{
    ASSERT_EQ(recorder.start(), MIRVAK_RECORD_OK);
    const DiskFullAt limit(2'000'000);
    filmToTheEnd();
    expectFilm(30);
}

TEST_F(RecorderTest, EndsByItselfWithAWholeFilmWhenTheEncoderFails)
{
    const Trouble trouble;
    Trouble::onEncode = [left = 50]() mutable { return left-- > 0; };
    ASSERT_EQ(recorder.start(), MIRVAK_RECORD_OK);
    filmToTheEnd(MIRVAK_RECORD_NO_ENCODER);
    expectFilm(40); // the failed encoder keeps some
}

TEST_F(RecorderTest, StopDoesNotWaitForWhatNeverEnds)
{
    const Trouble trouble;
    std::promise<void> goOn;
    Trouble::onEncode = [released = goOn.get_future().share()] { return released.wait(), true; };
    ASSERT_EQ(recorder.start(), MIRVAK_RECORD_OK);
    filmTwo();
    testing::internal::CaptureStderr();
    EXPECT_EQ(recorder.stop(milliseconds(20)), MIRVAK_RECORD_IO_ERROR);
    testing::internal::GetCapturedStderr();
    EXPECT_FALSE(recorder.isClosed());
    goOn.set_value();
    while (!recorder.isClosed())
        std::this_thread::sleep_for(milliseconds(1));
    expectFilm(2); // nothing is lost
}

TEST_F(RecorderTest, StopWaitsForWhatIsSlowButMoves)
{
    const Trouble trouble;
    std::atomic<bool> isSlow{false};
    Trouble::onEncode = [&isSlow] {
        return std::this_thread::sleep_for(milliseconds(isSlow ? 60 : 0)), true;
    };
    ASSERT_EQ(recorder.start(), MIRVAK_RECORD_OK);
    filmTwo();
    isSlow = true;
    time = milliseconds(1500).count() * 1'000'000;
    EXPECT_EQ(recorder.stop(milliseconds(1200)), MIRVAK_RECORD_OK); // of thirty pictures, and many times one
    EXPECT_EQ(recorder.length(), milliseconds(1500));
    expectFilm(30); // a repeated picture need not be a frame of its own
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
        const bool exists = std::filesystem::exists(place);
        const auto other = std::make_shared<Recorder>(place, format, mirvak::encoderChoices(false));
        EXPECT_EQ(other->start(), exists ? MIRVAK_RECORD_EXISTS : MIRVAK_RECORD_IO_ERROR) << place;
        EXPECT_EQ(testing::internal::GetCapturedStderr().find(place) == std::string::npos, exists);
    }
    EXPECT_EQ(std::make_shared<Recorder>(path, format, std::vector<mirvak::EncoderChoice>())->start(),
              MIRVAK_RECORD_NO_ENCODER);
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace

#include "PlainCopyThread.h"
#include "Film.h"
#include "FilmTools.h"
#include "TempDir.h"
#include "Trouble.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <future>
#include <thread>

using ::testing::Contains;

namespace {

constexpr mirvak::VideoFormat format{64, 48, 30};
constexpr std::chrono::milliseconds short_(20);

mirvak::UniqueFd madeFilm(const std::string& path)
{
    mirvak::Film film(path, format, mirvak::encoderChoices(false));
    EXPECT_TRUE(film.open() && film.add(greyFrame(format, 100).data(), 0) && film.close());
    return film.takeFile();
}

TEST(PlainCopyThread, ADiskThatDoesNotAnswerHoldsUpNobody)
{
    const TempDir folder;
    const std::string first = folder.file("1.mp4"), second = folder.file("2.mp4");
    const Trouble trouble;
    std::promise<void> answer;
    Trouble::onSync = [answered = answer.get_future().share()] { answered.wait(); };
    auto user = std::async(std::launch::async, [&] {
        mirvak::PlainCopyThread copies(short_);
        copies.start(first, madeFilm(first), short_);
        copies.start(second, madeFilm(second), short_);
    });
    EXPECT_EQ(user.wait_for(std::chrono::seconds(60)), std::future_status::ready) << "it waits";
    answer.set_value();
    user.wait();
    Trouble::awaitEndOf("recording copy");
    for (const std::string& film : {first, second})
        EXPECT_THAT(tools::boxesOf(film), Contains("moof")) << "given up, but changed afterwards";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(PlainCopyThread, CopiesComeOneAfterTheOtherAndACancelIsOfThoseThatWait)
{
    const TempDir folder;
    const std::string films[] = {folder.file("1.mp4"), folder.file("2.mp4"), folder.file("3.mp4")};
    const Trouble trouble;
    std::promise<void> answer;
    std::atomic<int> syncing{0}, most{0};
    Trouble::onSync = [&, answered = answer.get_future().share()] {
        most = std::max<int>(most, ++syncing);
        answered.wait();
        --syncing;
    };
    mirvak::PlainCopyThread copies(std::chrono::seconds(60));
    copies.start(films[0], madeFilm(films[0]), short_);
    copies.start(films[1], madeFilm(films[1]), short_);
    while (syncing == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_GT(copies.percent(), 50) << "only its bytes have to reach the disk";
    copies.cancel();
    EXPECT_GT(copies.percent(), 50) << "it falls back";
    copies.start(films[2], madeFilm(films[2]), short_);
    answer.set_value();
    while (copies.percent() >= 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    Trouble::awaitEndOf("recording copy");
    EXPECT_EQ(most, 1);
    for (const std::string& film : films)
        EXPECT_THAT(tools::boxesOf(film), Contains("moof").Times(film == films[2] ? 0 : 1)) << film;
}

TEST(PlainCopyThread, TheEndOfTheProgramWaitsForACopyThatGoesOn)
{
    const TempDir folder;
    const std::string film = folder.file("1.mp4");
    const Trouble trouble;
    std::promise<void> answer;
    Trouble::onSync = [answered = answer.get_future().share()] { answered.wait(); };
    std::atomic<bool> isLeaving{false};
    auto user = std::async(std::launch::async, [&] {
        mirvak::PlainCopyThread copies(std::chrono::seconds(300));
        copies.start(film, madeFilm(film), short_);
        isLeaving = true;
    });
    while (!isLeaving)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    answer.set_value();
    user.wait();
    EXPECT_THAT(tools::boxesOf(film), ::testing::Not(Contains("moof"))) << "given up";
}

} // namespace

#include "PlainCopyThread.h"
#include "Film.h"
#include "FilmTools.h"
#include "TempDir.h"
#include "Trouble.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <future>

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
        EXPECT_THAT(tools::boxesOf(film), ::testing::Contains("moof")) << "given up, but changed afterwards";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

} // namespace

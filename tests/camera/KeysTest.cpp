#include "KeyListener.h"
#include "KeyNumbers.h"
#include "TempDir.h"

#include <gmock/gmock.h>

#include <condition_variable>
#include <fcntl.h>
#include <future>
#include <mutex>
#include <sys/stat.h>

using namespace mirvak;
using ::testing::ElementsAre;

namespace {

class PressLog
{
public:
    void add(int key)
    {
        const std::lock_guard lock(mutex_);
        keys_.push_back(key);
        changed_.notify_all();
    }
    std::vector<int> waitFor(size_t count)
    {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, std::chrono::seconds(30), [&] { return keys_.size() >= count; });
        return keys_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<int> keys_;
};

void writeTo(const std::string& pipe, const std::string& text)
{
    const UniqueFd fd(open(pipe.c_str(), O_WRONLY | O_NONBLOCK));
    ASSERT_TRUE(fd.isValid()) << "nobody reads " << pipe;
    ASSERT_EQ(write(fd.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

} // namespace

TEST(Keys, KernelKeysGetTheNumbersOfTheLibrary)
{
    EXPECT_EQ(keyNumber(KEY_CAMERA), 2);
    EXPECT_EQ(keyNumber(KEY_ZOOMIN), 8);
    EXPECT_EQ(keyNumber(KEY_ZOOMOUT), 9);
    EXPECT_EQ(keyNumber(KEY_F1), KEY_F1);
    EXPECT_EQ(keyNumber(KEY_8), 0) << "KEY_8 is 9, which would zoom";
    EXPECT_EQ(keyNumber(KEY_1), 0);
}

TEST(Keys, LinesInThePipePressTheKeysOfTheDesk)
{
    const TempDir folder;
    PressLog desk, cameras;
    KeyListener listener;
    const auto start = [&] {
        return listener.start(
            [&](int key) { cameras.add(key); }, [&](int key) { desk.add(key); }, folder.file("keys"));
    };
    ASSERT_TRUE(start());
    EXPECT_FALSE(start()) << "it listens already";
    writeTo(folder.file("keys"), "2\n8");
    writeTo(folder.file("keys"), "\nno key\n6" + std::string(500, '\r') + "\n\n5\r\n-1\n9");
    EXPECT_THAT(desk.waitFor(4), ElementsAre(2, 8, 5, -1)) << "the last line is not complete";
    listener.stop();
    ASSERT_TRUE(start()) << "with the pipe that is there already";
    writeTo(folder.file("keys"), "11\n");
    EXPECT_THAT(desk.waitFor(5), ElementsAre(2, 8, 5, -1, 11));
    listener.stop();
    EXPECT_FALSE(UniqueFd(open(folder.file("keys").c_str(), O_WRONLY | O_NONBLOCK)).isValid())
        << "nobody reads it any more";
    EXPECT_THAT(cameras.waitFor(0), ElementsAre());
}

TEST(Keys, NothingArrivesAfterTheStop)
{
    const TempDir folder;
    std::promise<void> entered, leave;
    std::atomic<int> presses{0};
    KeyListener listener;
    ASSERT_TRUE(listener.start([](int) {},
                               [&](int) {
                                   if (++presses == 1) {
                                       entered.set_value();
                                       leave.get_future().wait();
                                   }
                               },
                               folder.file("keys")));
    writeTo(folder.file("keys"), "2\n");
    entered.get_future().wait();
    writeTo(folder.file("keys"), "2\n");
    std::thread release([&] { leave.set_value(); });
    listener.stop();
    const int seen = presses;
    release.join();
    EXPECT_EQ(presses, seen);
}

TEST(Keys, AFileInThePlaceOfThePipeIsLeftAlone)
{
    const TempDir folder;
    const std::string path = folder.write("keys", "2\n");
    const KeyFifo fifo{std::filesystem::path(path)};
    EXPECT_FALSE(fifo.isValid());
    EXPECT_FALSE(KeyFifo(folder.file("missing/keys")).isValid());
}

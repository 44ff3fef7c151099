// Bytes to and from a printer: the rules on a scripted stream, the system's part on a pseudo-terminal.
#include "Command.h"
#include "NZDirectoryList_linux.h"
#include "NZPosPrinter.h"
#include "PrinterNode.h"
#include "PrinterStream.h"
#include "TempDir.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <numeric>
#include <sys/resource.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <thread>

namespace {

using ::testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

/// Answers reads and writes from lists: a count of bytes or a result. Each attempt takes some seconds.
class ScriptedIO : public NZBufferedIO
{
public:
    explicit ScriptedIO(int secondsOfAttempt = 0, std::size_t capacity = 4) : NZBufferedIO(capacity, 64)
    {
        SetClock([this] { return now_; });
        pace_ = std::chrono::seconds(secondsOfAttempt);
    }
    bool IsOpened() override { return attempts < closesAfter; }
    int BaseWrite(const std::uint8_t* buf, std::size_t len, std::size_t) override
    {
        const int count = next(writes, len);
        written.insert(written.end(), buf, buf + std::max(count, 0));
        return count;
    }
    int BaseReadAvailable(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs) override
    {
        waits.push_back(timeoutMs);
        const int count = next(reads, len);
        std::iota(buf, buf + std::max(count, 0), nextByte);
        nextByte += std::max(count, 0);
        return count;
    }

    int closesAfter = 1000;         ///< attempts
    std::vector<int> writes, reads; ///< as if repeated for ever
    Bytes written;
    std::vector<std::size_t> waits;
    int attempts = 0, nextByte = 10;

private:
    int next(std::vector<int>& results, std::size_t len)
    {
        ++attempts;
        now_ += pace_;
        if (results.empty())
            return 0;
        std::rotate(results.begin(), results.begin() + 1, results.end());
        return std::min(results.back(), int(len));
    }
    std::chrono::seconds now_{1000}, pace_{};
};

constexpr std::uint8_t command[] = {0x10, 0x04, 0x01};

TEST(PrinterIo, LimitsAreWholeSecondsRoundedUpAndMustBeExceeded)
{
    const std::pair<std::size_t, int> limits[] = {{0, 1}, {999, 2}, {1000, 2}, {1500, 3}, {2000, 3}};
    for (const auto& [ms, attempts] : limits) {
        std::uint8_t buf[100] = {};
        ScriptedIO slow(1);
        slow.writes = slow.reads = {1};
        EXPECT_EQ(slow.WriteUntilLength(buf, sizeof buf, ms), attempts) << ms;
        EXPECT_EQ(slow.ReadUntilLength(buf, sizeof buf, ms), attempts) << ms;
        EXPECT_EQ(slow.ReadUntilByte(buf, sizeof buf, ms, 255), attempts) << ms;
        ScriptedIO silent(1);
        EXPECT_EQ(silent.Read(buf, sizeof buf, ms), 0);
        EXPECT_EQ(silent.attempts, attempts) << ms;
    }
    ScriptedIO deaf(1); // one second for the command, two for each second of waiting
    deaf.writes = {3};
    EXPECT_EQ(deaf.QueryOneByteStatus(command, 3, 8001), nzio::noAnswer);
    EXPECT_EQ(deaf.written.size(), 4U * 3) << "after 0, 3, 6 and 9 seconds";
}

TEST(PrinterIo, WhatComesInIsHandedOutWholeInOrderAndUpToTheTerminator)
{
    ScriptedIO stream;
    stream.reads = {2, 3, 0, 1};
    std::uint8_t buf[9] = {};
    EXPECT_EQ(stream.ReadUntilLength(buf, 9, 5000), 9);
    EXPECT_THAT(buf, ElementsAre(10, 11, 12, 13, 14, 15, 16, 17, 18));
    EXPECT_EQ(stream.ReadUntilByte(buf, 9, 5000, 19), 1) << "the first one";
    EXPECT_EQ(stream.ReadUntilByte(buf, 9, 5000, 22), 3);
    EXPECT_EQ(buf[2], 22);
    EXPECT_EQ(stream.ReadUntilByte(buf, 2, 5000, 99), 2);
    for (const std::size_t capacity : {0, 64}) {
        ScriptedIO brief(0, capacity);
        brief.reads = {1};
        brief.closesAfter = 3;
        EXPECT_EQ(brief.ReadUntilLength(buf, 9, 5000), 3) << "what came before it was closed";
        EXPECT_EQ(brief.Read(buf, 9, 5000), nzio::notOpen);
    }
    stream.reads = {-1};
    stream.SkipAvailable();
    EXPECT_EQ(stream.ReadUntilLength(buf, 9, 5000), nzio::notRead);
    EXPECT_EQ(stream.ReadUntilByte(buf, 9, 5000, 0), nzio::notRead);
}

TEST(PrinterIo, QueriesSendTheirCommandWholeAndAgainUntilAStatusComes)
{
    std::uint8_t answer[4] = {};
    ScriptedIO stream(1);
    stream.nextByte = 0xf0;
    stream.reads = {3};
    EXPECT_EQ(stream.Read(answer, 1, 0), 1); // two more have come, which are no answer
    stream.waits.clear();
    stream.reads = {0, 0, 1};
    stream.writes = {2, 1};
    EXPECT_EQ(stream.QueryOneByteStatus(command, 3, 60000), 0xf3);
    EXPECT_THAT(stream.written, ElementsAre(0x10, 0x04, 0x01, 0x10, 0x04, 0x01));
    EXPECT_THAT(stream.waits, ::testing::Each(1000U));
    stream.reads = {2, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(stream.QueryResponse(command, 3, answer, 4, 1000), 2) << "fewer than asked for";
    EXPECT_EQ(answer[1], 0xf5);
    for (const auto& [writes, result] : {std::pair(std::vector{2, 0}, nzio::notWritten), {{-1}, -1}}) {
        stream.writes = writes;
        EXPECT_EQ(stream.QueryOneByteStatus(command, 3, 1000), result);
        stream.writes = writes;
        EXPECT_EQ(stream.QueryResponse(command, 3, answer, 4, 1000), result);
    }
}

TEST(PrinterIo, AClosedStreamAnEmptyHolderAndAStreamWithoutADeviceSayWhatTheyAre)
{
    struct Bare : NZIO
    {
        bool IsOpened() override { return true; }
    } bare;
    std::uint8_t buf[3] = {};
    ScriptedIO closed;
    closed.closesAfter = 0;
    NZPosPrinter printer;
    const auto results = [&](NZIO* io) {
        printer.SetIO(io);
        return std::vector<int>{printer.Write(buf, 3, 0),
                                printer.Read(buf, 3, 0),
                                printer.ReadUntilByte(buf, 3, 0, 0),
                                printer.ReadUntilLength(buf, 3, 0),
                                printer.WriteUntilLength(buf, 3, 0),
                                printer.QueryOneByteStatus(buf, 3, 0),
                                printer.QueryResponse(buf, 3, buf, 3, 0)};
    };
    EXPECT_THAT(results(nullptr), ::testing::Each(-1));
    EXPECT_FALSE(printer.IsOpened() || printer.Open("/dev/null"));
    EXPECT_THAT(results(&closed), ::testing::Each(-1));
    EXPECT_EQ(closed.attempts, 0);
    EXPECT_THAT(results(&bare), ElementsAre(-2, -3, -3, -3, -2, -2, -2));

    Bytes told;
    const auto note = [](const std::uint8_t* bytes, std::size_t len, void* user) {
        EXPECT_GT(len, 0U) << "nothing is no news";
        static_cast<Bytes*>(user)->insert(static_cast<Bytes*>(user)->end(), bytes, bytes + len);
    };
    ScriptedIO stream;
    stream.writes = {2, 0};
    stream.reads = {1};
    printer.SetIO(&stream);
    printer.SetWritedEvent(note, &told);
    printer.SetReadedEvent(note, &told);
    EXPECT_EQ(printer.WriteUntilLength(command, 3, 0), 2);
    EXPECT_EQ(printer.Read(buf, 1, 0), 1);
    EXPECT_THAT(told, ElementsAre(0x10, 0x04, 10));
    ScriptedIO slow(1);
    slow.reads = {1};
    printer.SetIO(&slow);
    printer.SetReadedEvent(note, &told);
    EXPECT_EQ(printer.Read(buf, 3, 0), 1) << "fewer than there is room for";
    EXPECT_THAT(told, ElementsAre(0x10, 0x04, 10, 10));
    printer.SetIO(&stream);
    stream.writes = {1};
    stream.closesAfter = stream.attempts + 2;
    EXPECT_EQ(printer.WriteUntilLength(command, 3, 0), 2) << "as many as had gone out when it was closed";
    printer.SetIO(&closed);
}

std::size_t openDescriptors()
{
    const auto all = std::filesystem::directory_iterator("/proc/self/fd");
    return std::size_t(std::distance(begin(all), end(all)));
}

struct PrinterDevice : ::testing::Test
{
    const TempDir folder_;
    const std::string path_ = folder_.file("lp0");
    std::optional<PrinterNode> node_{QString::fromStdString(path_)};
    PrinterStream stream_{4096, 64};
};

TEST_F(PrinterDevice, ASlowOneGetsEverythingThoughSignalsComeAndNeverHoldsAWriteForLonger)
{
    ASSERT_TRUE(stream_.Open(path_.c_str()));
    Bytes sent(100000), received;
    for (std::size_t i = 0; i < sent.size(); ++i)
        sent[i] = std::uint8_t(i * 7919 >> 5); // no period of the buffers
    int count = 0, room = 0;
    // Each time what takes longer than a look at a cancel does, but not for ever.
    while ((count = stream_.BaseWrite(sent.data() + room, sent.size() - std::size_t(room), 450)) > 0)
        room += count;
    EXPECT_EQ(count, 0) << "it is full";
    EXPECT_LT(room, 100000);

    signal(SIGUSR1, [](int) {});
    const pthread_t writer = pthread_self();
    std::thread device([&] {
        Bytes part(700);
        while (received.size() < sent.size()) {
            pthread_kill(writer, SIGUSR1);
            const ssize_t got = read(node_->descriptor(), part.data(), part.size());
            received.insert(received.end(), part.begin(), part.begin() + got);
        }
    });
    EXPECT_EQ(stream_.WriteUntilLength(sent.data() + room, sent.size() - std::size_t(room), 600000),
              100000 - room);
    device.join();
    EXPECT_EQ(received, sent);
}

TEST_F(PrinterDevice, TellsItsStatusAndIsGoneForGoodWhenItIsPulledOut)
{
    const std::size_t before = openDescriptors();
    for (const char* wrong : {"/nowhere", folder_.path().c_str()})
        EXPECT_FALSE(stream_.Open(wrong)) << wrong;
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(stream_.Open(path_.c_str())) << "also while it is open";
    EXPECT_EQ(openDescriptors(), before + 1);
    const std::string device = std::filesystem::canonical(path_).string();
    EXPECT_EQ(tools::run("ls -l /proc/self/fd | grep -c '" + device + "$' || true"), "0\n")
        << "no child has it";
    std::uint8_t answer[4] = {};
    ASSERT_EQ(write(node_->descriptor(), "ab", 2), 2);
    ASSERT_EQ(stream_.Read(answer, 1, 60000), 1);
    ASSERT_TRUE(stream_.Open(path_.c_str()));
    ASSERT_EQ(write(node_->descriptor(), "c", 1), 1);
    ASSERT_EQ(stream_.Read(answer, 1, 60000), 1);
    EXPECT_EQ(answer[0], 'c') << "the rest is of the time before";
    ASSERT_EQ(write(node_->descriptor(), "\x16...", 4), 4);
    EXPECT_EQ(stream_.QueryOneByteStatus(command, 3, 60000), 0x16);
    EXPECT_EQ(stream_.QueryResponse(command, 3, answer, 4, 0), 0) << "the rest of an old answer is none";
    node_.reset();
    EXPECT_EQ(stream_.Write(command, 3, 600000), -1);
    EXPECT_EQ(stream_.WriteUntilLength(command, 3, 600000), -1);
    EXPECT_EQ(stream_.QueryOneByteStatus(command, 3, 600000), -1);
    EXPECT_LE(stream_.ReadUntilLength(answer, 4, 0), 0);
    stream_.Close();
    stream_.Close();
    EXPECT_FALSE(stream_.IsOpened());
    EXPECT_EQ(stream_.Write(command, 3, 0), -1);
    EXPECT_EQ(openDescriptors() + 1, before) << "and the node's own";
}

TEST_F(PrinterDevice, ADescriptorThatCannotBeWaitedForIsRefused)
{
    rlimit usual{};
    getrlimit(RLIMIT_NOFILE, &usual);
    rlimit more = usual;
    more.rlim_cur = std::min<rlim_t>(usual.rlim_max, FD_SETSIZE + 100);
    if (more.rlim_cur <= FD_SETSIZE)
        GTEST_SKIP() << "there are no such descriptors here";
    setrlimit(RLIMIT_NOFILE, &more);
    std::vector<mirvak::UniqueFd> all;
    do
        all.emplace_back(open("/dev/null", O_RDONLY | O_CLOEXEC));
    while (all.back().get() >= 0 && all.back().get() < FD_SETSIZE - 1);
    EXPECT_FALSE(stream_.Open(path_.c_str()));
    all.pop_back();
    EXPECT_TRUE(stream_.Open(path_.c_str())) << "the last one that can be";
    EXPECT_EQ(stream_.Write(command, 3, 60000), 3);
    setrlimit(RLIMIT_NOFILE, &usual);
}

TEST(PrinterList, HoldsWhatBeginsRightAndIsNoDirectoryAsFarAsThereIsRoom)
{
    const TempDir folder;
    folder.write("lp0", "");
    folder.write("hiddev0", "");
    std::filesystem::create_directory(folder.file("lpdir"));
    const char* const prefixes[] = {"xx", "lp", nullptr};
    const std::string lp0 = folder.file("lp0"), other = folder.file("hiddev0");
    std::string buf(1000, '#');
    const auto list = [&](const std::string& dir, const char* const* names, std::size_t size) {
        std::size_t total = 0;
        const int count = NZDirectoryList_linux::ListFiles(dir.c_str(), names, buf.data(), size, &total);
        return std::pair(count, total);
    };
    EXPECT_EQ(list(folder.path(), prefixes, buf.size()), std::pair(1, lp0.size() + 2));
    EXPECT_EQ(buf.substr(0, lp0.size() + 2), lp0 + '\0' + '#');
    EXPECT_EQ(list(folder.path(), prefixes, lp0.size() + 1).first, 1);
    EXPECT_EQ(list(folder.path(), prefixes, lp0.size()).first, 0);
    EXPECT_EQ(list(folder.path(), nullptr, buf.size()), std::pair(2, lp0.size() + other.size() + 4));
    EXPECT_EQ(list(folder.file("nothing"), nullptr, buf.size()), std::pair(0, std::size_t(0)));
    const std::string deep = folder.file(std::string(120, 'd') + '/' + std::string(200, 'd'));
    std::filesystem::create_directories(deep);
    std::ofstream(deep + "/lp0").put('x');
    EXPECT_EQ(list(deep, prefixes, buf.size()).first, 1);
    EXPECT_EQ(std::string(buf.c_str()), deep.substr(0, 299));
}

/// A connection that, as the kernel's printer driver does, forgets at closing what it has not passed on yet,
/// and is ready for more when there is nothing of that.
class ForgetfulLine : public NZUsbIO_linux
{
public:
    ForgetfulLine() : NZUsbIO_linux(64, 64)
    {
        const mirvak::UniqueFd door(socket(AF_INET, SOCK_STREAM, 0));
        const int little = 4096, none = 1;
        setsockopt(door.get(), SOL_SOCKET, SO_RCVBUF, &little, sizeof little);
        sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
        socklen_t length = sizeof address;
        auto* place = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(bind(door.get(), place, length) + listen(door.get(), 1), 0);
        getsockname(door.get(), place, &length);
        mirvak::UniqueFd own(socket(AF_INET, SOCK_STREAM, 0));
        EXPECT_EQ(connect(own.get(), place, length), 0);
        const linger forget{1, 0};
        setsockopt(own.get(), SOL_SOCKET, SO_LINGER, &forget, sizeof forget);
        setsockopt(own.get(), IPPROTO_TCP, TCP_NOTSENT_LOWAT, &none, sizeof none);
        fcntl(own.get(), F_SETFL, O_NONBLOCK);
        printer = mirvak::UniqueFd(accept(door.get(), nullptr, nullptr));
        EXPECT_TRUE(adopt(std::move(own)));
    }
    mirvak::UniqueFd printer;
};

TEST(PrinterIo, ClosingLosesNothingThatIsStillOnItsWay)
{
    ForgetfulLine line;
    const Bytes page(1 << 20);
    int sent = 0;
    for (int count = 1; count > 0; sent += count)
        count = line.BaseWrite(page.data(), page.size(), 100);
    int printed = 0;
    std::thread printing([&] {
        Bytes part(4096);
        for (ssize_t count = 1; count > 0; printed += std::max<ssize_t>(count, 0))
            count = read(line.printer.get(), part.data(), part.size());
    });
    line.Close();
    printing.join();
    EXPECT_GT(sent, 4096);
    EXPECT_EQ(printed, sent);
}

} // namespace

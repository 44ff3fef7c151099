#include "DecoderPool.h"

#include "MadeCodes.h"
#include "TempDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <zint.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>
#include <sys/stat.h>
#include <sys/wait.h>

using mirvak::DecoderPool;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

namespace {

constexpr size_t pictureBytes = 1'000'000;

/// A job that decodes one code with that text. One that is tried again may be read twice.
DecoderPool::Job jobFor(const std::string& text, std::set<std::string>& read)
{
    const cv::Mat code = drawCode(BARCODE_CODE128, text, 3);
    DecoderPool::Job job;
    job.size = code.size();
    job.draw = [code](cv::Mat& canvas) { code.copyTo(canvas); };
    job.decoders = mirvak::helper::Decoders::bars;
    job.read = [&read](const mirvak::helper::Reading&, std::string_view bytes) { read.emplace(bytes); };
    return job;
}

bool isGone(pid_t pid)
{
    return kill(pid, 0) != 0 && errno == ESRCH; // a zombie would still be there
}

/// A program that stands for the helper.
std::string script(const TempDir& folder, const std::string& body)
{
    const std::string path = folder.write("helper", "#!/bin/sh\n" + body + "\n");
    chmod(path.c_str(), 0755);
    return path;
}

TEST(DecoderPool, AHelperThatDiesIsReplacedAndItsPictureTriedAgain)
{
    std::set<std::string> read;
    std::vector<pid_t> killed;
    {
        DecoderPool pool(LUMRO_CODE_HELPER, pictureBytes);
        std::vector<DecoderPool::Job> jobs{
            jobFor("FIRST", read), jobFor("SECOND", read), jobFor("THIRD", read)};
        // Drawing happens before the question is asked: the helper of an earlier picture dies under the next.
        jobs[2].draw = [&, draw = jobs[2].draw](cv::Mat& canvas) {
            draw(canvas);
            for (const pid_t pid : killed.empty() ? pool.pids() : std::vector<pid_t>()) {
                killed.push_back(pid);
                kill(pid, SIGKILL);
            }
        };
        pool.run(jobs);
    }
    EXPECT_FALSE(killed.empty());
    EXPECT_THAT(read, ElementsAre("FIRST", "SECOND", "THIRD"));
    for (const pid_t pid : killed) // one that had nothing to do any more is reaped at the end of the pool
        EXPECT_TRUE(isGone(pid));
}

/// Places of this process at which memory of the pictures is mapped.
int pictureMemories()
{
    std::ifstream maps("/proc/self/maps");
    int count = 0;
    for (std::string line; std::getline(maps, line);)
        count += line.find("memfd:pictures") != std::string::npos ? 1 : 0;
    return count;
}

int openDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<int>(std::distance(begin(all), end(all)));
}

TEST(DecoderPool, NeitherAHelperNorMemoryOutlivesThePool)
{
    const int descriptors = openDescriptors();
    std::vector<pid_t> pids;
    std::set<std::string> read;
    {
        DecoderPool pool(LUMRO_CODE_HELPER, pictureBytes);
        DecoderPool::Job large = jobFor("DOES NOT FIT", read);
        large.size = {1200, 1000};
        bool isDrawn = false;
        large.draw = [&](cv::Mat&) { isDrawn = true; };
        pool.run({large, jobFor("ONE", read)});
        EXPECT_FALSE(isDrawn) << "there is no room";
        EXPECT_THAT(read, ElementsAre("ONE"));
        pids = pool.pids();
        ASSERT_EQ(pids.size(), 1U);
        EXPECT_GT(pictureMemories(), 0);
    }
    EXPECT_TRUE(isGone(pids[0]));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
    EXPECT_EQ(pictureMemories(), 0);
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(DecoderPool, AHelperThatHangsDiesTalksNonsenseOrIsMissingEndsTheRun)
{
    const TempDir folder;
    std::set<std::string> read;
    std::string ones; // a head of an answer that promises millions of bytes
    for (size_t i = 0; i < sizeof(mirvak::helper::Reading); ++i)
        ones += "\\001";
    for (const std::string& body : {std::string("exec sleep 1000"),
                                    std::string("exit 3"),
                                    std::string("printf nonsense >&3; exec sleep 1000"),
                                    std::string("printf %200s >&3; exec sleep 1000"), // as long as an answer
                                    "printf '" + ones + "LIES' >&3; exec sleep 1000",
                                    std::string()}) {
        DecoderPool pool(body.empty() ? folder.file("missing") : script(folder, body), pictureBytes);
        pool.setTimeLimit(50ms);
        pool.run(std::vector<DecoderPool::Job>(10, jobFor("ONE", read)));
        EXPECT_THAT(read, IsEmpty()) << body;
        EXPECT_THAT(pool.pids(), IsEmpty()) << body;
    }
}

TEST(DecoderPool, APictureIsTriedTwiceAndAHelperThatAlwaysDiesIsNotStartedForEver)
{
    const TempDir folder;
    std::set<std::string> read;
    int drawn = 0;
    DecoderPool::Job job = jobFor("ONE", read);
    job.draw = [&](cv::Mat&) { ++drawn; };
    DecoderPool pool(script(folder, "exit 3"), pictureBytes);
    pool.run({job});
    EXPECT_EQ(drawn, 2);
    drawn = 0;
    pool.run(std::vector<DecoderPool::Job>(30, job));
    EXPECT_LT(drawn, 15);
}

TEST(DecoderPool, TheHelperGetsNoDescriptorsOfOurs)
{
    const TempDir folder;
    const int ours = dup(STDERR_FILENO); // without close-on-exec, as a careless library opens it
    DecoderPool pool(script(folder, "ls /proc/self/fd | tr '\\n' ' ' > " + folder.file("list")),
                     pictureBytes);
    std::set<std::string> read;
    pool.run({jobFor("ONE", read)});
    close(ours);
    const std::string fds = folder.content("list");
    EXPECT_THAT(fds, testing::StartsWith("0 1 2 3 4 ")); // one more: ls reads the folder itself
    EXPECT_LE(fds.size(), std::string("0 1 2 3 4 5 ").size());
}

TEST(DecoderPool, AHelperThatHangsIsLeftAtOnceWhenNobodyWaitsAnyMore)
{
    const TempDir folder;
    std::set<std::string> read;
    DecoderPool pool(script(folder, "exec sleep 1000"), pictureBytes);
    pool.setTimeLimit(1h);
    std::vector<pid_t> hung;
    pool.setWatch([&](double share) {
        EXPECT_EQ(share, 0);
        hung = pool.pids();
        return false;
    });
    pool.run({jobFor("FIRST", read), jobFor("SECOND", read), jobFor("THIRD", read)});
    EXPECT_THAT(read, IsEmpty());
    EXPECT_FALSE(hung.empty());
    for (const pid_t pid : hung)
        EXPECT_TRUE(isGone(pid));
}

} // namespace

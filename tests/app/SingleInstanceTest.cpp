#include "SingleInstance.h"

#include "TempDir.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTest>

#include <csignal>
#include <functional>
#include <future>
#include <sys/shm.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Start = SingleInstance::Start;
constexpr std::chrono::seconds patience(20);
constexpr uid_t nobody = 65534;

/// A process of its own that does something and then lives on until it is killed.
class Holder
{
public:
    explicit Holder(const std::function<bool()>& hold, uid_t user = geteuid())
    {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        process_ = fork();
        if (process_ == 0) {
            const bool holds = (user == geteuid() || setuid(user) == 0) && hold();
            EXPECT_EQ(write(ready[1], holds ? "y" : "n", 1), 1);
            for (;;)
                pause();
        }
        close(ready[1]);
        char answer = 0;
        EXPECT_EQ(read(ready[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        close(ready[0]);
    }
    ~Holder() { crash(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    void crash()
    {
        if (process_ < 0)
            return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        crashed() << process_;
        process_ = -1;
    }
    static QList<pid_t>& crashed()
    {
        static QList<pid_t> all;
        return all;
    }

private:
    pid_t process_ = -1;
};

class SingleInstanceTest : public ::testing::Test
{
protected:
    SingleInstanceTest()
    {
        chmod(folder_.path().c_str(), 01777); // as the usual one
        setenv("TMPDIR", folder_.path().c_str(), 1);
    }
    ~SingleInstanceTest() override
    {
        unsetenv("TMPDIR");
        QFile segments(QStringLiteral("/proc/sysvipc/shm")); // their columns: key, id, rights, size, maker...
        if (segments.open(QIODevice::ReadOnly))
            for (const QByteArray& line : segments.readAll().split('\n'))
                if (const auto column = line.simplified().split(' ');
                    column.size() > 4 && Holder::crashed().contains(column[4].toInt()))
                    shmctl(column[1].toInt(), IPC_RMID, nullptr);
    }
    static Start startOnce(const QString& key) { return SingleInstance(key).start(patience); }
    std::function<bool()> instance() const
    {
        return [key = key_] { return (new SingleInstance(key))->start(patience) == Start::Runs; };
    }

    const QString key_ = QStringLiteral("lumro-test"); // what stands for it lies in a folder of its own
    const TempDir folder_;
};

TEST_F(SingleInstanceTest, TheSecondMakesTheFirstComeForwardUntilThatIsGone)
{
    {
        SingleInstance first(key_);
        ASSERT_EQ(first.start(patience), Start::Runs);
        int asked = 0;
        QObject::connect(&first, &SingleInstance::asked, &first, [&] { ++asked; });
        for (int i = 1; i <= 2; ++i) {
            auto second = std::async(std::launch::async, [this] { return startOnce(key_); });
            EXPECT_TRUE(QTest::qWaitFor([&] { return asked == i; }, 20000));
            EXPECT_EQ(second.get(), Start::Forward);
        }
        first.release(); // its window is closed, but it still writes
        EXPECT_EQ(startOnce(key_), Start::Runs);
    }
    EXPECT_EQ(startOnce(key_), Start::Runs);
}

TEST_F(SingleInstanceTest, WhatACrashLeftBehindIsTakenOver)
{
    const QString keyFile = QSharedMemory(key_).nativeKey();
    for (const bool fileIsRemoved : {false, true}) {
        for (int i = 0; i < 8;
             ++i) { // a removed file's number, from which the segment's follows, comes again
            Holder(instance()).crash();
            ASSERT_TRUE(QFile::exists(keyFile));
            if (fileIsRemoved)
                QFile::remove(keyFile);
            ASSERT_EQ(startOnce(key_), Start::Runs) << i;
        }
    }
}

TEST_F(SingleInstanceTest, OneThatDoesNotAnswerKeepsOthersOutWhileItLives)
{
    Holder hung(instance());
    EXPECT_EQ(SingleInstance(key_).start(std::chrono::milliseconds(1)), Start::Silent);
    QFile::remove(QSharedMemory(key_).nativeKey()); // as programs that tidy up do
    EXPECT_EQ(SingleInstance(key_).start(std::chrono::milliseconds(1)), Start::Silent);
    const auto end = std::async(std::launch::async, [&] { hung.crash(); });
    EXPECT_EQ(startOnce(key_), Start::Runs) << "also when it ends while it is asked";
    end.wait();

    const QByteArray name = QByteArray::fromStdString(folder_.path());
    InstanceSocket owner(name), other(name);
    ASSERT_EQ(owner.claim(), InstanceSocket::Claim::Ours);
    ASSERT_EQ(other.claim(), InstanceSocket::Claim::Taken);
    owner.release();
    EXPECT_EQ(other.await(patience), InstanceSocket::Answer::Ended);

    Holder older([this] { return (new QSharedMemory(key_))->create(1); }); // without a socket
    EXPECT_EQ(startOnce(key_), Start::Silent);
    older.crash();
    EXPECT_EQ(startOnce(key_), Start::Runs);
}

TEST_F(SingleInstanceTest, TwoUsersDoNotHinderEachOther)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can be two users";
    for (const uid_t first : {nobody, uid_t(0)}) {
        QFile::remove(QSharedMemory(key_).nativeKey()); // so that the first one owns it
        const Holder one(instance(), first);
        const Holder other(instance(), first == 0 ? nobody : 0);
        EXPECT_EQ(SingleInstance(key_).start(std::chrono::milliseconds(1)), Start::Silent) << "root's own";
    }
}

} // namespace

#include "ShutterSound.h"

#include "FreshSettings.h"
#include "Settings.h"
#include "TempDir.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <sys/stat.h>

namespace {

class ShutterSoundTest : public FreshSettings
{
protected:
    ShutterSoundTest() { settings::scannerSound.write(settings, true); }
    /// A helper that notes its process id at each start and goes on as `body` says.
    QString helper(const std::string& body) const
    {
        const std::string path =
            folder.write("helper.sh", "#!/bin/sh\necho $$ >> " + folder.file("starts") + "\n" + body + "\n");
        chmod(path.c_str(), 0700);
        return QString::fromStdString(path);
    }
    QByteArrayList starts() const
    {
        const QByteArray ids = QByteArray::fromStdString(folder.content("starts")).simplified();
        return ids.isEmpty() ? QByteArrayList() : ids.split(' ');
    }
    qint64 heard() const { return QFile(QString::fromStdString(folder.file("heard"))).size(); }
    static int linesIn(const std::string& text) { return int(std::count(text.begin(), text.end(), '\n')); }

    const TempDir folder;
};

} // namespace

TEST_F(ShutterSoundTest, TellsOneHelperOfEachCaptureWhenItIsWanted)
{
    ShutterSound sound(helper("exec cat > " + folder.file("heard")));
    settings::scannerSound.write(settings, false);
    sound.play();
    settings::scannerSound.write(settings, true);
    EXPECT_FALSE(QTest::qWaitFor([&] { return !starts().isEmpty(); }, 50)) << "not before it is wanted";
    for (int i = 1; i <= 5; ++i) {
        sound.play();
        EXPECT_TRUE(QTest::qWaitFor([&] { return heard() == i; })) << i;
    }
    EXPECT_EQ(starts().size(), 1);
}

TEST_F(ShutterSoundTest, AFailureIsSaidOnceAndLeftAtThat)
{
    for (const QString& program :
         {QString::fromStdString(folder.file("no such program")), helper("exit 3")}) {
        testing::internal::CaptureStderr();
        {
            ShutterSound sound(program);
            for (int i = 0; i < 20; ++i) {
                sound.play();
                QTest::qWait(5);
            }
        }
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(linesIn(said), 1) << said;
    }
    EXPECT_EQ(starts().size(), 1);
}

TEST_F(ShutterSoundTest, AHelperThatHangsHoldsNothingUp)
{
    testing::internal::CaptureStderr();
    {
        ShutterSound sound(helper("exec sleep 1000"));
        sound.play();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !starts().isEmpty(); }));
        for (int i = 0; i < 9000; ++i) { // more bytes than a pipe holds: a call that waits would never return
            for (int click = 0; click < 8; ++click)
                sound.play();
            QCoreApplication::processEvents();
        }
        EXPECT_LE(sound.findChild<QProcess*>()->bytesToWrite(), 8) << "a burst when it wakes up";
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_NE(kill(starts()[0].toInt(), 0), 0) << "it is gone with the window";
}

TEST_F(ShutterSoundTest, AHelperThatWentToSleepIsStartedAgain)
{
    ShutterSound sound(helper("head -c 1 >> " + folder.file("heard")));
    testing::internal::CaptureStderr();
    for (int i = 1; i <= 3; ++i) {
        sound.play();
        EXPECT_TRUE(QTest::qWaitFor([&] { return starts().size() == i && heard() == i; })) << i;
        const auto* player = sound.findChild<QProcess*>();
        EXPECT_TRUE(QTest::qWaitFor([&] { return player->state() == QProcess::NotRunning; })) << i;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ShutterSoundTest, TheRealHelperLivesWithoutASoundServer)
{
    QProcess player;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PULSE_SERVER"), QStringLiteral("unix:/nonexistent"));
    player.setProcessEnvironment(environment);
    player.start(QStringLiteral(SOUND_HELPER), QStringList());
    ASSERT_TRUE(player.waitForStarted());
    player.write("\n\n");
    EXPECT_FALSE(player.waitForFinished(300)) << "it goes on and waits for one";
    player.closeWriteChannel();
    ASSERT_TRUE(player.waitForFinished());
    EXPECT_EQ(player.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(player.exitCode(), 0);
}

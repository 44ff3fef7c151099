#include "FileNaming.h"
#include "Settings.h"
#include "TempDir.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

class FileNamingTest : public ::testing::Test
{
protected:
    FileNamingTest() { settings::setSavePath(store_, directory()); }
    ~FileNamingTest() override { store_.GetSettings()->clear(); }

    QString directory() const { return QString::fromStdString(folder_.path()); }
    QString nextName() const { return QFileInfo(naming_.getImagePath()).fileName(); }

    TempDir folder_;
    ConfigSettings store_;
    FileNaming naming_{store_};
};

TEST_F(FileNamingTest, SerialNumberFollowsTheHighestPresentOne)
{
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_000.jpg"));
    folder_.write("IMAGE_007.jpg", "");
    folder_.write("IMAGE_002.jpg", "");
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_008.jpg"));
    folder_.write("IMAGE_999.jpg", "");
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_1000.jpg"));
}

TEST_F(FileNamingTest, OtherNamesDoNotCountOrCountAsZero)
{
    folder_.write("image_050.jpg", "");         // another prefix: case matters
    folder_.write("IMAGE_060.png", "");         // another format
    folder_.write("IMAGE_99999999999.jpg", ""); // no number that a successor could be counted from
    folder_.write("IMAGE_2147483647.jpg", "");
    QDir(directory()).mkdir(QStringLiteral("IMAGE_070.jpg")); // no file
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_001.jpg"));
    folder_.write("IMAGE_abc.jpg", "");
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_001.jpg"));
    folder_.write("IMAGE_041.jpg.bak", ""); // the format occurs in the name; the field ends at the last dot
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_001.jpg"));
}

TEST_F(FileNamingTest, DateRuleNamesByTheMillisecond)
{
    settings::namingRules.write(store_, 1);
    settings::imageFormat.write(store_, 1);
    const QRegularExpression seventeenDigits(QStringLiteral("^\\d{17}\\.png$"));
    EXPECT_TRUE(seventeenDigits.match(nextName()).hasMatch()) << nextName().toStdString();
}

TEST_F(FileNamingTest, UnknownChoicesFallBack)
{
    settings::namingRules.write(store_, 2);
    settings::imageFormat.write(store_, 3);
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_000.jpg"));
    settings::imageFormat.write(store_, 2);
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_000.bmp"));
}

TEST_F(FileNamingTest, ForbiddenCharactersOfThePrefixNeverReachAPath)
{
    for (const char* prefix : {"a/b", "../a\\b", "a:*?\"<>|b"}) {
        settings::namingPrefix.write(store_, QString::fromLatin1(prefix));
        const QFileInfo next(naming_.getImagePath());
        EXPECT_EQ(next.absolutePath(), directory()) << prefix;
        EXPECT_TRUE(next.fileName().endsWith(QStringLiteral("ab_000.jpg"))) << prefix;
    }
    settings::namingPrefix.write(store_, QStringLiteral("///"));
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_000.jpg"));
    settings::namingPrefix.write(store_, QStringLiteral("发票 счёт"));
    EXPECT_EQ(nextName(), QStringLiteral("发票 счёт_000.jpg"));
}

TEST_F(FileNamingTest, FoldersAreMadeOneLevelDeep)
{
    settings::setSavePath(store_, directory() + QStringLiteral("/new"));
    EXPECT_EQ(naming_.targetDirectory(), directory() + QStringLiteral("/new"));
    EXPECT_TRUE(QDir(directory() + QStringLiteral("/new")).exists());

    settings::createDirByDate.write(store_, true);
    const QString today = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    EXPECT_EQ(naming_.targetDirectory(), directory() + QStringLiteral("/new/") + today);

    settings::setSavePath(store_, directory() + QStringLiteral("/missing/parent"));
    EXPECT_EQ(naming_.getImagePath(), QString());
    EXPECT_FALSE(QDir(directory() + QStringLiteral("/missing")).exists());
}

} // namespace

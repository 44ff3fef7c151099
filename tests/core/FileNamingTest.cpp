#include "FileNaming.h"
#include "FreshSettings.h"
#include "Settings.h"
#include "TempDir.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <ctime>

namespace {

class FileNamingTest : public FreshSettings
{
protected:
    FileNamingTest() { settings::setSavePath(settings, directory()); }
    QString directory() const { return QString::fromStdString(folder_.path()); }
    QString nextName() const { return QFileInfo(naming_.getImagePath()).fileName(); }

    TempDir folder_;
    FileNaming naming_{settings};
};

TEST_F(FileNamingTest, SerialNumberFollowsTheHighestPresentOne)
{
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_000.jpg"));
    folder_.write("IMAGE_007.jpg", "");
    folder_.write("IMAGE_002.jpg", "");
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_008.jpg"));
    folder_.write("IMAGE_999.jpg", "");
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_1000.jpg"));
    folder_.write("IMAGE_2147483647.jpg", "");
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_2147483648.jpg"));
    folder_.write("my_scan_004.jpg", "");
    settings::namingPrefix.write(settings, QStringLiteral("my_scan"));
    EXPECT_EQ(nextName(), QStringLiteral("my_scan_005.jpg"));
    settings::namingPrefix.write(settings, QString());
    folder_.write(".own_2147483650.jpg", ""); // hidden, but its number is taken too
    EXPECT_EQ(nextName(), QStringLiteral("_2147483651.jpg"));
}

TEST_F(FileNamingTest, OtherNamesDoNotCountOrCountAsZero)
{
    folder_.write("image_050.jpg", "");                  // another prefix: case matters
    folder_.write("IMAGE_060.png", "");                  // another format
    folder_.write("IMAGE_99999999999999999999.jpg", ""); // no number that a successor could be counted from
    folder_.write("IMAGE_9223372036854775807.jpg", "");
    QDir(directory()).mkdir(QStringLiteral("IMAGE_070.jpg")); // no file
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_001.jpg"));
    folder_.write("IMAGE_abc.jpg", "");
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_001.jpg"));
    folder_.write("IMAGE_041.jpg.bak", ""); // the format occurs in the name; the field ends at the last dot
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_001.jpg"));
}

// What the search for the number does not see: folders, links to nothing, in some folders other spellings.
TEST_F(FileNamingTest, ANameThatAnythingHasIsPassedOver)
{
    QDir(directory()).mkdir(QStringLiteral("IMAGE_000.jpg"));
    QFile::link(QStringLiteral("nowhere"), directory() + QStringLiteral("/IMAGE_001.jpg"));
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_002.jpg"));
    const QString first = FileNaming::stampedPath(directory(), QStringLiteral("pdf"));
    folder_.write(QFileInfo(first).fileName().toStdString(), "");
    const QString second = FileNaming::stampedPath(directory(), QStringLiteral("pdf"));
    EXPECT_NE(second, first);
    EXPECT_TRUE(QDateTime::fromString(QFileInfo(second).fileName(), QStringLiteral("yyyyMMddhhmmss'.pdf'"))
                    .isValid());
}

TEST_F(FileNamingTest, ATakenNameIsFollowedByOneOfItsKind)
{
    folder_.write("IMAGE_1000.jpg", "");
    const std::pair<const char*, const char*> names[] = {
        {"IMAGE_007.jpg", "IMAGE_008.jpg"},
        {"IMAGE_999.jpg", "IMAGE_1001.jpg"},
        {"IMAGE_9223372036854775807.jpg", "IMAGE_9223372036854775807_1.jpg"},
        {"front.and.back.jpg", "front.and.back_1.jpg"},
        {"20231231235959.pdf", "20240101000000.pdf"},
        {"20240229120059999.png", "20240229120100000.png"},
        {"20241399120059999.png", "20241399120060000.png"}, // no time
        {"12", "13"}};
    for (const auto& [taken, next] : names) {
        const QString path = FileNaming::nextPath(directory() + QLatin1Char('/') + QLatin1String(taken));
        EXPECT_EQ(path, directory() + QLatin1Char('/') + QLatin1String(next));
    }
}

TEST_F(FileNamingTest, ATimeGoesOnThroughAnHourThatTheClockLeavesOut)
{
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3"); // in this night it is three o'clock after one
    tzset();
    const QString path = FileNaming::nextPath(directory() + QStringLiteral("/20260329015959.pdf"));
    qputenv("TZ", before);
    tzset();
    EXPECT_EQ(path, directory() + QStringLiteral("/20260329020000.pdf"));
}

TEST_F(FileNamingTest, TheRuleAndTheFormatAreThoseOfTheSettingsOrTheFirst)
{
    settings::namingRules.write(settings, 1);
    settings::imageFormat.write(settings, 1);
    const QRegularExpression seventeenDigits(QStringLiteral("^\\d{17}\\.png$"));
    EXPECT_TRUE(seventeenDigits.match(nextName()).hasMatch()) << nextName().toStdString();

    settings::namingRules.write(settings, 2);
    settings::imageFormat.write(settings, 3);
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_000.jpg"));
    settings::imageFormat.write(settings, 2);
    EXPECT_EQ(nextName(), QStringLiteral("IMAGE_000.bmp"));
}

TEST_F(FileNamingTest, ForbiddenCharactersOfThePrefixNeverReachAPath)
{
    for (const char* prefix : {"a/b", "../a\\b", "a:*?\"<>|b", ".ab", "/.ab", "a\nb", "\037\001ab"}) {
        settings::namingPrefix.write(settings, QString::fromLatin1(prefix));
        const QFileInfo next(naming_.getImagePath());
        EXPECT_EQ(next.absolutePath(), directory()) << prefix;
        EXPECT_FALSE(next.isHidden()) << prefix;
        EXPECT_TRUE(next.fileName().endsWith(QStringLiteral("ab_000.jpg"))) << prefix;
    }
    for (const char* prefix : {"///", "..", "./."}) {
        settings::namingPrefix.write(settings, QString::fromLatin1(prefix));
        EXPECT_EQ(nextName(), QStringLiteral("IMAGE_000.jpg")) << prefix;
    }
    settings::namingPrefix.write(settings, QStringLiteral("发票 счёт"));
    EXPECT_EQ(nextName(), QStringLiteral("发票 счёт_000.jpg"));
}

TEST_F(FileNamingTest, FoldersAreMadeOneLevelDeep)
{
    settings::setSavePath(settings, directory() + QStringLiteral("/new"));
    EXPECT_EQ(naming_.targetDirectory(), directory() + QStringLiteral("/new"));
    EXPECT_TRUE(QDir(directory() + QStringLiteral("/new")).exists());

    settings::createDirByDate.write(settings, true);
    const QString today = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    EXPECT_EQ(naming_.targetDirectory(), directory() + QStringLiteral("/new/") + today);

    settings::setSavePath(settings, directory() + QStringLiteral("/missing/parent"));
    EXPECT_EQ(naming_.getImagePath(), QString());
    EXPECT_FALSE(QDir(directory() + QStringLiteral("/missing")).exists());
}

} // namespace

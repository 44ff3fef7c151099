#include "Settings.h"
#include "TempDir.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

class SettingsTest : public ::testing::Test
{
protected:
    ~SettingsTest() override { store_.GetSettings()->clear(); }
    ConfigSettings store_;
};

TEST_F(SettingsTest, MissingValuesHaveTheirDefaults)
{
    EXPECT_EQ(settings::appLanguage.read(store_), -1);
    EXPECT_EQ(settings::cameraResolution.read(store_), 1);
    EXPECT_EQ(settings::buttonId.read(store_), 52719);
    EXPECT_EQ(settings::namingPrefix.read(store_), QStringLiteral("IMAGE"));
    EXPECT_FALSE(settings::createDirByDate.read(store_));
    EXPECT_TRUE(settings::savePath(store_).endsWith(QStringLiteral("/ScannerImage")));
}

TEST_F(SettingsTest, ValuesOfAnotherTypeGiveTheDefault)
{
    const Setting<bool> usuallyOn{"On", true};
    const Setting<bool> usuallyOff{"Off", false};
    const Setting<QString> name{"Name", QStringLiteral("IMAGE")};
    const Setting<int> number{"Number", 5};
    const QVariant list(QStringList{QStringLiteral("a"), QStringLiteral("b")}); // a,b without quotes
    const QVariant values[] = {QStringLiteral("abc"), QString(), -7, true, false, list, QByteArray("1"), 2.5};
    const auto readAs = [&](const auto& setting, const QVariant& value) {
        store_.GetSettings()->setValue(QLatin1String(setting.key), value);
        return setting.read(store_);
    };
    QList<int> numbers;
    QStringList names;
    std::string switches;
    for (const QVariant& value : values) {
        numbers << readAs(number, value);
        names << readAs(name, value);
        switches += readAs(usuallyOn, value) ? '1' : '0';
        switches += readAs(usuallyOff, value) ? '1' : '0';
    }
    EXPECT_EQ(numbers, (QList<int>{5, 5, -7, 5, 5, 5, 5, 5}));
    EXPECT_EQ(names.join(QLatin1Char(' ')), QStringLiteral("abc  -7 true false IMAGE IMAGE IMAGE"));
    EXPECT_EQ(switches, "1010101100101010");
    store_.GetSettings()->setValue(QStringLiteral("Save_Path"), list);
    EXPECT_TRUE(settings::savePath(store_).endsWith(QStringLiteral("/ScannerImage")));
}

TEST_F(SettingsTest, InstancesSeeEachOthersWritesAtOnce)
{
    ConfigSettings other;
    EXPECT_EQ(settings::deskew.read(other), 0);
    settings::deskew.write(store_, 2);
    EXPECT_EQ(settings::deskew.read(other), 2);
}

TEST_F(SettingsTest, TheFileIsWrittenBelowTheUsersConfiguration)
{
    settings::deskew.write(store_, 1);
    store_.GetSettings()->sync();
    EXPECT_TRUE(QFileInfo(store_.GetSettings()->fileName())
                    .filePath()
                    .endsWith(QStringLiteral("/lumro/lylumroscanner.ini")));
    QFile file(store_.GetSettings()->fileName());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("Deskew=1"));
}

TEST(BrokenSettingsTest, ABrokenFileIsKeptBesideAndServesWhatItCan)
{
    const QFileInfo usual(ConfigSettings().GetSettings()->fileName());
    const TempDir folder;
    const QString configuration = QString::fromStdString(folder.path());
    QDir(configuration).mkdir(QStringLiteral("lumro"));
    const std::string broken = "[General]\nDeskew=2\nNaming_Prefix=a, b\nWatermark_Text=\"paid, thanks\"\n"
                               "Book_Line=abc\nScanner_Sound=true\nno equals sign here\n\x01\x02\xff\n";
    folder.write("lumro/lylumroscanner.ini", broken);
    folder.write("lumro/lylumroscanner.ini.broken", "of the last time");
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, configuration);
    {
        ConfigSettings store;
        EXPECT_EQ(settings::cameraResolution.read(store), 1);
        EXPECT_EQ(settings::deskew.read(store), 2);
        EXPECT_EQ(settings::namingPrefix.read(store), QStringLiteral("IMAGE"));
        EXPECT_EQ(settings::watermarkText.read(store), QStringLiteral("paid, thanks"));
        EXPECT_FALSE(settings::bookLine.read(store));
        EXPECT_TRUE(settings::scannerSound.read(store));
        settings::deskew.write(store, 1);
    }
    QSettings::setPath(
        QSettings::IniFormat, QSettings::UserScope, QFileInfo(usual.absolutePath()).absolutePath());
    QFile copy(configuration + QStringLiteral("/lumro/lylumroscanner.ini.broken"));
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll().toStdString(), broken);
}

} // namespace

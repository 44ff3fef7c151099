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
    store_.GetSettings()->setValue(QStringLiteral("Camera_Resolution"), QStringLiteral("abc"));
    EXPECT_EQ(settings::cameraResolution.read(store_), 1);
    store_.GetSettings()->setValue(QStringLiteral("Camera_Resolution"), QStringLiteral("-7"));
    EXPECT_EQ(settings::cameraResolution.read(store_), -7);
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
    const std::string broken = "[General]\nDeskew=2\nno equals sign here\n\x01\x02\xff\n";
    folder.write("lumro/lylumroscanner.ini", broken);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, configuration);
    {
        ConfigSettings store;
        EXPECT_EQ(settings::cameraResolution.read(store), 1);
        EXPECT_EQ(settings::deskew.read(store), 2);
        settings::deskew.write(store, 1);
    }
    QSettings::setPath(
        QSettings::IniFormat, QSettings::UserScope, QFileInfo(usual.absolutePath()).absolutePath());
    QFile copy(configuration + QStringLiteral("/lumro/lylumroscanner.ini.broken"));
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll().toStdString(), broken);
}

} // namespace

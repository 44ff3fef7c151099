#include "Settings.h"

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

TEST_F(SettingsTest, ABrokenFileIsKeptBesideAndServesWhatItCan)
{
    settings::deskew.write(store_, 1);
    store_.GetSettings()->sync();
    const QString path = store_.GetSettings()->fileName();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray broken("[General]\nDeskew=2\nno equals sign here\n\x01\x02\xff\n");
    file.write(broken);
    file.close();

    ConfigSettings reader;
    reader.GetSettings()->sync();
    EXPECT_EQ(settings::cameraResolution.read(reader), 1);
    ConfigSettings opened; // a new start of the program
    opened.GetSettings();
    QFile copy(path + QStringLiteral(".broken"));
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), broken);
    QFile::remove(copy.fileName());
}

} // namespace

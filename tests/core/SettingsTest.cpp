#include "Settings.h"
#include "FreshSettings.h"
#include "TempDir.h"

#include <QDir>
#include <QFileInfo>

namespace {

using SettingsTest = FreshSettings;

TEST_F(SettingsTest, MissingValuesHaveTheirDefaults)
{
    EXPECT_EQ(settings::appLanguage.read(settings), -1);
    EXPECT_EQ(settings::cameraResolution.read(settings), 1);
    EXPECT_EQ(settings::buttonId.read(settings), 52719);
    EXPECT_EQ(settings::namingPrefix.read(settings), QStringLiteral("IMAGE"));
    QString ofPictures; // plain JPEG files by number, without cropping, watermark or inset
    for (const Setting<int>& setting : {settings::namingRules,
                                        settings::imageFormat,
                                        settings::scanType,
                                        settings::deskew,
                                        settings::scanSize,
                                        settings::watermarkPos,
                                        settings::mergePos})
        ofPictures += QString::number(setting.read(settings));
    EXPECT_EQ(ofPictures, QStringLiteral("0000000"));
    for (const Setting<bool>& off : {settings::createDirByDate,
                                     settings::bookLine,
                                     settings::cameraSynthesis,
                                     settings::watermarkTime,
                                     settings::scannerSound,
                                     settings::pdfText,
                                     settings::pdfArchive})
        EXPECT_FALSE(off.read(settings)) << off.key;
    EXPECT_TRUE(settings::markUnsure.read(settings)) << "nobody takes a guess for what was read";
    EXPECT_EQ(settings::autoScanType.read(settings), 1);
    EXPECT_EQ(settings::autoScanDelay.read(settings), 5);
    EXPECT_TRUE(settings::savePath(settings).endsWith(QStringLiteral("/ScannerImage")));
    settings::setSavePath(settings, QString());
    EXPECT_TRUE(settings::savePath(settings).endsWith(QStringLiteral("/ScannerImage")))
        << "not the root folder";
}

TEST_F(SettingsTest, ValuesOfAnotherTypeGiveTheDefault)
{
    const Setting<bool> usuallyOn{"On", true};
    const Setting<bool> usuallyOff{"Off", false};
    const Setting<QString> name{"Name", QStringLiteral("IMAGE")};
    const Setting<int> number{"Number", 5};
    const QVariant list(QStringList{QStringLiteral("a"), QStringLiteral("b")}); // a,b without quotes
    const QVariant values[] = {
        QStringLiteral("abc"), QString(), -7, true, false, list, QByteArray("1"), 2.5, 1};
    const auto readAs = [&](const auto& setting, const QVariant& value) {
        settings.GetSettings()->setValue(QLatin1String(setting.key), value);
        return setting.read(settings);
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
    EXPECT_EQ(numbers, (QList<int>{5, 5, -7, 5, 5, 5, 5, 5, 1}));
    EXPECT_EQ(names.join(QLatin1Char(' ')), QStringLiteral("abc  -7 true false IMAGE IMAGE IMAGE 1"));
    EXPECT_EQ(switches, "101010110010101011");
    settings.GetSettings()->setValue(QStringLiteral("Save_Path"), list);
    EXPECT_TRUE(settings::savePath(settings).endsWith(QStringLiteral("/ScannerImage")));
}

TEST_F(SettingsTest, WritesAreSeenByOthersAtOnceAndLieBelowTheUsersConfiguration)
{
    settings::deskew.write(settings, 1);
    EXPECT_TRUE(settings.GetSettings()->fileName().endsWith(QStringLiteral("/lumro/lylumroscanner.ini")));
    EXPECT_NE(TempDir::contentOf(settings.GetSettings()->fileName().toStdString()).find("Deskew=1"),
              std::string::npos);

    ConfigSettings other;
    EXPECT_EQ(settings::deskew.read(other), 1);
    settings::deskew.write(settings, 2);
    EXPECT_EQ(settings::deskew.read(other), 2);
}

/// With a configuration folder of its own.
class BrokenSettingsTest : public ::testing::Test
{
protected:
    BrokenSettingsTest()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QString::fromStdString(folder.path()));
    }
    ~BrokenSettingsTest() override
    {
        QSettings::setPath(
            QSettings::IniFormat, QSettings::UserScope, QFileInfo(usual_.absolutePath()).absolutePath());
    }

    const QFileInfo usual_{ConfigSettings().GetSettings()->fileName()};
    const TempDir folder;
};

TEST_F(BrokenSettingsTest, WhatCannotBeWrittenHoldsAllTheSameAndIsNamedOnce)
{
    folder.write("lumro", "a file where the folder should be");
    ::testing::internal::CaptureStderr();
    ConfigSettings store;
    settings::deskew.write(store, 1);
    settings::deskew.write(store, 2);
    const std::string errors = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(settings::deskew.read(), 2);
    const auto named = errors.find("lumro/lylumroscanner.ini cannot be written");
    EXPECT_NE(named, std::string::npos) << errors;
    EXPECT_EQ(errors.find('\n', named), errors.size() - 1) << errors;
}

TEST_F(BrokenSettingsTest, ABrokenFileIsKeptBesideAndServesWhatItCan)
{
    QDir(QString::fromStdString(folder.path())).mkdir(QStringLiteral("lumro"));
    const std::string broken = "[General]\nDeskew=2\nNaming_Prefix=a, b\nWatermark_Text=\"paid, thanks\"\n"
                               "Book_Line=abc\nScanner_Sound=true\nno equals sign here\n\x01\x02\xff\n";
    folder.write("lumro/lylumroscanner.ini", broken);
    folder.write("lumro/lylumroscanner.ini.broken", "of the last time");
    ConfigSettings store;
    EXPECT_EQ(settings::cameraResolution.read(store), 1);
    EXPECT_EQ(settings::deskew.read(store), 2);
    EXPECT_EQ(settings::namingPrefix.read(store), QStringLiteral("IMAGE"));
    EXPECT_EQ(settings::watermarkText.read(store), QStringLiteral("paid, thanks"));
    EXPECT_FALSE(settings::bookLine.read(store));
    EXPECT_TRUE(settings::scannerSound.read(store));
    settings::deskew.write(store, 1);
    EXPECT_EQ(folder.content("lumro/lylumroscanner.ini.broken"), broken);
}

} // namespace

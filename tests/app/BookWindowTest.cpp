// Flat pages of a book, and the burn-in scripts, as the window's user meets them.
#include "WindowFixture.h"

#include "ConfigSet.h"
#include "FactoryTest.h"
#include "books/Spread.h"

#include <QCheckBox>
#include <QImageReader>

namespace {

class BookWindowTest : public LumroScannerTest
{
protected:
    ~BookWindowTest() override { QDir(factoryTest::scriptFolder()).removeRecursively(); }

    static QImage book()
    {
        const deskpictures::Spread spread = deskpictures::makeSpread(2, {1296, 972});
        const cv::Mat& photo = spread.photo;
        return QImage(photo.data, photo.cols, photo.rows, static_cast<int>(photo.step), QImage::Format_RGB888)
            .copy();
    }
    ConfigSet& dialog() const { return *window_->findChild<ConfigSet*>(); }
    void chooseDoublePage()
    {
        dialog().show();
        dialog().findChild<QCheckBox*>(QStringLiteral("checkDoublePage"))->setChecked(true);
        dialog().hide();
    }
};

TEST_F(BookWindowTest, TheTwoPagesOfABookBecomeFilesInTheStrip)
{
    settings::bookLine.write(store_, true);
    const std::string camera = "{ name = \"Books\"; usb = \"1b172000\"; source = \"page.jpg\"; fps = 15; "
                               "resolutions = [ \"1296x972\" ]; }";
    ASSERT_TRUE(shows(camera, book()));
    ASSERT_TRUE(QTest::qWaitFor([this] { return view().GetBooklineEnable(); }, 5000));
    chooseDoublePage();
    window_->setMergePending(true);
    window_->onBookFlat();
    EXPECT_TRUE(messages_.contains(QStringLiteral("Please complete the image merge first!")));
    EXPECT_TRUE(files().isEmpty());
    window_->setMergePending(false);
    window_->onBookFlat();
    ASSERT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 2; }, 30000));
    ASSERT_EQ(files().size(), 3) << "the frame as it is, then left and right";
    for (int i : {1, 2}) {
        const QSize page = QImageReader(pictures() + QLatin1Char('/') + files().at(i)).size();
        EXPECT_GT(page.height(), page.width()) << "half a spread is taller than wide";
    }
}

TEST_F(BookWindowTest, WhatDoesNotFlattenBooksIsToldEvenWhileTheSettingsShow)
{
    ASSERT_TRUE(shows(camera("", 1, "0bda5801")));
    dialog().show();
    window_->onBookFlat();
    EXPECT_TRUE(messages_.contains(QStringLiteral("This device does not support this feature!")));
    dialog().hide();
    changeDesk(camera());
    window_.reset();
    messages_.clear();
    ASSERT_TRUE(shows(camera()));
    dialog().show();
    window_->onBookFlat();
    EXPECT_TRUE(messages_.contains(QStringLiteral("Please turn on the book-line first!")));
    messages_.clear();
    view().SetBooklineEnable(true);
    window_->onBookFlat();
    EXPECT_TRUE(messages_.isEmpty()) << "the guard is silent";
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(BookWindowTest, BurnInStartsAScriptForEveryCameraThatIsNotShown)
{
    static QStringList lines;
    lines.clear();
    const auto before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
        if (text.startsWith(QLatin1String("star path:")))
            lines << text.section(QLatin1Char('/'), -1);
    });
    QDir().mkpath(factoryTest::scriptFolder());
    for (int i = 0; i < 2; ++i) { // the third one's script is missing
        QFile script(factoryTest::scriptFolder() + QStringLiteral("cbx3000c%1.sh").arg(i));
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho done > \"$0.mark\"\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const auto isMarked = [](int i) {
        return QFile::exists(factoryTest::scriptFolder() + QStringLiteral("cbx3000c%1.sh.mark").arg(i));
    };
    ASSERT_TRUE(
        shows(camera("a", Qt::red, 2) + "," + camera("b", Qt::yellow, 1) + "," + camera("c", Qt::blue, 2)));
    ASSERT_EQ(view().GetCurrentDeviceIndex(), 1);
    window_->onFactoryTesting();
    EXPECT_EQ(lines, (QStringList{QStringLiteral("cbx3000c0.sh"), QStringLiteral("cbx3000c2.sh")}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return isMarked(0); }, 10000));
    EXPECT_FALSE(isMarked(1)) << "the camera that is shown";
    EXPECT_TRUE(messages_.isEmpty()) << "a missing script is silent";
    window_.reset();
    lines.clear();
    ASSERT_TRUE(shows(camera()));
    window_->onFactoryTesting();
    EXPECT_TRUE(lines.isEmpty());
    qInstallMessageHandler(before);
}

} // namespace

// The face window while its cameras come, go and fail.
#include "FaceLibrary.h"
#include "FaceVerifyFixture.h"
#include "FaceWatch.h"

#include <QSignalSpy>

namespace {

TEST_F(FaceVerifyTest, InfraredIsShownOnlyWhenTheColourCameraHasGone)
{
    std::string slow = colour();
    slow.replace(slow.find("fps = 30"), 8, "fps = 2");
    open(slow + ", " + infrared());
    EXPECT_TRUE(QTest::qWaitFor([this] { return isShown(Qt::red); }, 60'000));
    window_->scannerimgIR(); // so infrared frames have come since the last one in colour
    QCoreApplication::processEvents();
    EXPECT_TRUE(isShown(Qt::red));
    keepOnly(infrared());
    EXPECT_TRUE(isShown(Qt::red)) << "the last picture stays until the other camera's are shown";
    EXPECT_TRUE(QTest::qWaitFor([this] { return isShown(Qt::gray); }, 60'000));
    click("buttonOneClick");
    EXPECT_EQ(result(), QStringLiteral("Face comparison failed, score:-2"))
        << "infrared is no face to compare";
    keepOnly(slow);
    EXPECT_TRUE(QTest::qWaitFor([this] { return isShown(Qt::black); }, 60'000)) << "the last one has gone";
    EXPECT_EQ(placeholder(), QStringLiteral("The face camera was disconnected."));
}

TEST_F(FaceVerifyTest, NobodyIsJudgedByAnInfraredPictureOfTheOneBefore)
{
    open(colour() + ", " + infrared());
    click("buttonScanner");
    ASSERT_EQ(files().size(), 2);
    keepOnly(colour());
    window_->scannerimg();
    EXPECT_EQ(files().size(), 3) << "the other camera goes on at once";
    libraries_.lives = {95};
    libraries_.asked.clear();
    click("buttonLiveFace");
    EXPECT_EQ(result(), QStringLiteral("This is a living face."));
    ASSERT_EQ(files().size(), 5);
    EXPECT_EQ(libraries_.asked, std::vector<std::string>{files().last().toStdString()});
    EXPECT_GT(colourOf(4).red() - colourOf(4).green(), 150) << "of the camera that is left";
    window_.reset();
    open(colour()); // and never another one
    libraries_.lives = {49};
    click("buttonLiveFace");
    EXPECT_EQ(result(), QStringLiteral("This is not a living face."));
    EXPECT_EQ(files().size(), 7);

    window_.reset();
    open(colour() + ", " + infrared());
    click("buttonScanner");
    keepOnly(infrared());
    EXPECT_TRUE(QTest::qWaitFor([this] { return isShown(Qt::gray); }, 60'000));
    libraries_.lives = {0, 95};
    click("buttonLiveFace");
    EXPECT_EQ(result(), QStringLiteral("This is not a living face.")) << "nor by one in colour";
}

TEST_F(FaceVerifyTest, AFaceIsFramedOnlyAsLongAsFramesCome)
{
    FaceLibrary library;
    FaceWatch watch(library);
    QImage frame(64, 48, QImage::Format_RGB888);
    frame.fill(Qt::gray);
    const auto isFramed = [&] {
        watch.offer(frame);
        return !watch.face().isEmpty();
    };
    EXPECT_TRUE(QTest::qWaitFor(isFramed, 60'000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return watch.face().isEmpty(); }, 60'000));
}

TEST_F(FaceVerifyTest, TheLibraryStartsAnewAfterACheckAndIsNotTriedAgainInVain)
{
    const std::vector<unsigned char> rgb(64 * 48 * 3);
    const auto isSeen = [&](FaceLibrary& library) { return library.look(rgb.data(), 64, 48).isFound; };
    FaceLibrary library, useless;
    EXPECT_TRUE(isSeen(library));
    EXPECT_TRUE(FaceLibrary::Run(library).isReady());
    EXPECT_FALSE(libraries_.isRunning);
    EXPECT_TRUE(isSeen(library));
    library.rest();
    EXPECT_EQ(libraries_.started.exchange(0), 3);
    libraries_.starts = ID_FACE_NO_WEIGHTS;
    for (int frame = 0; frame < 3; ++frame)
        EXPECT_FALSE(isSeen(useless));
    EXPECT_EQ(libraries_.started, 1);
}

TEST_F(FaceVerifyTest, WhatKeepsTheVideoEmptyIsSaidAndPicturesHaveOneSize)
{
    open("");
    EXPECT_EQ(placeholder(), QStringLiteral("There is no face camera."));
    window_.reset();
    open(colour("fail_create = true;"));
    EXPECT_EQ(placeholder(), QStringLiteral("The face camera cannot be opened. It may be in use."));
    window_.reset();
    std::string small = colour();
    small.erase(small.find("\"640x480\", "), 11);
    open(small);
    EXPECT_EQ(placeholder(), QString());
    window_->scannerimg();
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(QImage(pictures() + QLatin1Char('/') + files().first()).size(), QSize(640, 480));
}

TEST_F(FaceVerifyTest, WithoutDevicesItSaysSoAndHangsNowhere)
{
    libraries_.opens = HIDCARD_NO_READER;
    {
        FaceVerify window(nullptr, &camera_);
        const QSignalSpy closed(&window, &FaceVerify::closefacesign);
        window.SetMainIdx(0);
        EXPECT_EQ(closed.count(), 1);
    }
    EXPECT_EQ(dialogs_.messages,
              QStringList{QStringLiteral("Init IDCard failed,this device may not support this feature!")});
    libraries_.opens = HIDCARD_OK;

    open(colour()); // and no infrared one
    window_->scannerimg();
    ASSERT_EQ(files().size(), 1);
    keepOnly("");
    click("buttonLiveFace");
    EXPECT_EQ(result(), QString());
    click("buttonOneClick"); // the last picture is not this person's
    EXPECT_EQ(result(), QStringLiteral("Face comparison failed, score:-2"));
    EXPECT_EQ(files().size(), 1);
    const QSignalSpy closed(window_.get(), &FaceVerify::closefacesign);
    QTest::mouseClick(
        part<QWidget>(*window_, "titleBar")->findChild<QPushButton*>(QStringLiteral("buttonClose")),
        Qt::LeftButton);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(libraries_.isReaderOpen) << "others may use the reader";
    window_.reset();
    ReadZktCard cards; // of the other window that reads them
    cards.inithycard();
    open("");
    window_->close();
    EXPECT_TRUE(libraries_.isReaderOpen) << "it goes on reading";
    EXPECT_EQ(cards.deinithycard(), HIDCARD_OK);
    EXPECT_FALSE(libraries_.isReaderOpen);
    open("");
    click("buttonScanner");
    EXPECT_EQ(files().size(), 1);
}

} // namespace

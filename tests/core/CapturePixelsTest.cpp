// What a capture does to the picture, looked at in the saved file.
#include "Background.h"
#include "CaptureProcessor.h"
#include "Codec.h"
#include "DiskFullAt.h"
#include "Enhance.h"
#include "FreshSettings.h"
#include "Pixels.h"
#include "Seal.h"
#include "Settings.h"
#include "TempDir.h"
#include "Threshold.h"
#include "Watermark.h"
#include "mirvakcamera.h"

#include <QDateTime>
#include <QImage>

#include <opencv2/imgproc.hpp>

#include <functional>

using mirvak::Image;

namespace {

const cv::Vec3b white(255, 255, 255);

/// Grey print, a red and a blue seal on yellowish paper.
cv::Mat officePage()
{
    cv::Mat page(480, 640, CV_8UC3, cv::Scalar(214, 208, 190));
    for (int y = 60; y < 460; y += 40)
        cv::putText(page, "Ledger of the paper mill", {30, y}, cv::FONT_HERSHEY_SIMPLEX, 1, {95, 95, 95}, 2);
    cv::circle(page, {180, 240}, 90, {190, 60, 70}, 40);
    cv::circle(page, {460, 240}, 90, {60, 80, 170}, 40);
    return page;
}

class CapturePixels : public FreshSettings
{
protected:
    CapturePixels()
    {
        settings::setSavePath(settings, QString::fromStdString(folder_.path()));
        settings::imageFormat.write(settings, 1); // PNG keeps every pixel
    }
    cv::Mat captured(const cv::Mat& rgb, int cropMode, int colourMode = 0, const QRect& selection = {})
    {
        Image frame;
        frame.pixels = rgb.clone();
        const QString path = processor_.imageSave(&frame, cropMode, colourMode, selection);
        EXPECT_EQ(difference(frame.pixels, rgb), 0) << "the frame is the caller's";
        const auto saved = mirvak::readImage(path.toStdString());
        return saved ? saved->pixels : cv::Mat();
    }

    TempDir folder_;
    MirvakCamera camera_;
    CaptureProcessor processor_{camera_};
};

TEST_F(CapturePixels, EveryColourModeHasItsOwnOperation)
{
    const auto none = [](Image&) {};
    const auto seal = [](mirvak::SealColour colour) {
        return [colour](Image& image) { mirvak::strengthenSeal(image, colour); };
    };
    const std::vector<std::function<void(Image&)>> modes{none,
                                                         mirvak::removeBackground,
                                                         mirvak::threshold,
                                                         mirvak::enhanceColour,
                                                         seal(mirvak::SealColour::red),
                                                         seal(mirvak::SealColour::blue),
                                                         mirvak::processDocument};
    const cv::Mat page = officePage();
    std::vector<cv::Mat> wanted;
    for (size_t mode = 0; mode < modes.size(); ++mode) {
        Image image;
        image.pixels = page.clone();
        modes[mode](image);
        for (const cv::Mat& other : wanted)
            ASSERT_GT(difference(image.pixels, other, cv::NORM_L1) / page.total(), 3)
                << "no mode looks like another";
        wanted.push_back(image.pixels);
        EXPECT_EQ(difference(captured(page, cropping::none, static_cast<int>(mode)), image.pixels), 0)
            << mode;
    }
    EXPECT_EQ(difference(captured(page, cropping::none, 7), wanted[6]), 0);
    EXPECT_EQ(difference(captured(page, cropping::none, 8), page), 0) << "unknown";
}

TEST_F(CapturePixels, CroppingModesCutWhatTheyMean)
{
    cv::Mat desk(480, 640, CV_8UC3, cv::Scalar(50, 55, 60)), paper(desk(cv::Rect(140, 60, 360, 340)));
    paper.setTo(cv::Scalar(235, 235, 230));
    cv::circle(paper, {90, 85}, 12, {40, 38, 42}, cv::FILLED); // upper left: a quarter of the way
    for (const int whole : {cropping::none, cropping::second})
        EXPECT_EQ(difference(captured(desk, whole), desk), 0) << whole;

    const cv::Mat page = captured(desk, cropping::deskew); // 15 pixels inside the page's edges
    EXPECT_NEAR(page.cols, 360 - 30, 2);
    EXPECT_NEAR(page.rows, 340 - 30, 2);
    cv::Mat brightness;
    cv::cvtColor(page, brightness, cv::COLOR_RGB2GRAY);
    const cv::Rect dot = cv::boundingRect(brightness < 140);
    EXPECT_NEAR(dot.x + dot.width / 2, 90 - 15, 2);
    EXPECT_NEAR(dot.y + dot.height / 2, 85 - 15, 2);
    EXPECT_EQ(cv::countNonZero(brightness(cv::Rect(0, 0, page.cols, 50)) < 200), 0)
        << "no sliver of the desk";

    cv::Mat noise(desk.size(), CV_8UC3);
    cv::randu(noise, 0, 256);
    for (const cv::Rect& part : {cv::Rect(30, 10, 200, 50), cv::Rect(0, 0, 1, 480), cv::Rect(639, 479, 1, 1)})
        EXPECT_EQ(
            difference(captured(noise, cropping::selection, 0, {part.x, part.y, part.width, part.height}),
                       noise(part)),
            0)
            << part;
    EXPECT_EQ(difference(captured(noise, cropping::selection), noise), 0) << "nothing is selected";
}

TEST_F(CapturePixels, EveryPageOfTheSecondModeIsAFileAndAFailureLosesNoOther)
{
    cv::Mat desk(640, 960, CV_8UC3, cv::Scalar(50, 55, 60));
    const cv::Rect places[] = {{60, 60, 240, 360}, {360, 70, 240, 360}, {660, 60, 240, 360}};
    for (const cv::Rect& place : places)
        desk(place).setTo(cv::Scalar(235, 235, 230));
    cv::randu(desk(cv::Rect(380, 90, 200, 300)), 60, 200); // the middle one makes a large file
    Image frame;
    frame.pixels = desk.clone();
    const SavedPages all = processor_.savePages(&frame, cropping::second, 2);
    ASSERT_EQ(all.paths.size(), 3);
    EXPECT_EQ(all.failed, 0);
    for (int i = 0; i < 3; ++i) // in the order in which they lie there
        EXPECT_EQ(all.paths[i], settings::savePath(settings) + QStringLiteral("/IMAGE_00%1.png").arg(i));
    const auto first = mirvak::readImage(all.paths[0].toStdString());
    ASSERT_TRUE(first);
    EXPECT_NEAR(first->pixels.cols, 240 - 30, 2);
    EXPECT_TRUE(otherThan(first->pixels, white).empty()) << "the colours are of the mode, no desk is left";
    EXPECT_EQ(difference(frame.pixels, desk), 0) << "the frame is the caller's";
    {
        const DiskFullAt full(20'000);
        const SavedPages some = processor_.savePages(&frame, cropping::second, 0);
        EXPECT_EQ(some.failed, 1);
        EXPECT_EQ(some.paths.size(), 2);
        for (const QString& path : some.paths)
            EXPECT_FALSE(QImage(path).isNull());
        const DiskFullAt fuller(100);
        EXPECT_EQ(processor_.savePages(&frame, cropping::second, 0).failed, 3) << "each is counted";
    }
    frame.pixels = cv::Mat(480, 640, CV_8UC3, cv::Scalar(120, 110, 100));
    const SavedPages none = processor_.savePages(&frame, cropping::second, 0);
    ASSERT_EQ(none.paths.size(), 1) << "without pages the picture is one";
    EXPECT_EQ(difference(mirvak::readImage(none.paths[0].toStdString())->pixels, frame.pixels), 0);
    EXPECT_EQ(processor_.savePages(nullptr, cropping::second, 0).failed, 1);
}

TEST_F(CapturePixels, WhereTheSecondModeFindsNoSheetItMakesTheLinesLevel)
{
    cv::Mat page(800, 800, CV_8UC3, white), askew;
    for (int y = 40; y < 800; y += 28)
        cv::putText(
            page, "Ledger of the paper mill, page " + std::to_string(y), {30, y}, 0, 0.8, {40, 40, 40}, 2);
    cv::warpAffine(page, askew, cv::getRotationMatrix2D({400, 400}, 4, 1), page.size(), 1, 0, white);
    Image frame;
    frame.pixels = askew;
    const SavedPages saved = processor_.savePages(&frame, cropping::second, 0);
    ASSERT_EQ(saved.paths.size(), 1);
    const auto level = mirvak::readImage(saved.paths[0].toStdString());
    EXPECT_NEAR(level->pixels.cols, 800 * (std::cos(4 * CV_PI / 180) + std::sin(4 * CV_PI / 180)), 6);
}

TEST_F(CapturePixels, PicturesOfPersonsAreTheirOwnersAlone)
{
    CaptureProcessor processor(camera_, CaptureProcessor::FilesFor::ownerAlone);
    Image frame;
    frame.pixels = cv::Mat(48, 64, CV_8UC3, white);
    const QString path = processor.imageSave(&frame, cropping::none, 0);
    EXPECT_EQ(QFile::permissions(path) &
                  (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
              0);
    EXPECT_FALSE(QImage(path).isNull());
}

TEST_F(CapturePixels, TheWatermarkStandsAtItsAnchorInPureRed)
{
    const cv::Mat paper(480, 640, CV_8UC3, white);
    for (const QString& text : {QStringLiteral("LE"), QStringLiteral("样本ЖЖ")}) {
        settings::watermarkText.write(settings, text);
        const int right = 640 - 120 - 20 * text.size();
        const std::vector<cv::Point> anchors{{100, 100}, {100, 360}, {right, 100}, {right, 360}};
        cv::Rect first;
        for (int position = 1; position <= 4; ++position) {
            settings::watermarkPos.write(settings, position);
            const cv::Mat saved = captured(paper, cropping::none);
            const cv::Rect box = otherThan(saved, white) - anchors[static_cast<size_t>(position - 1)];
            first = position == 1 ? box : first;
            EXPECT_EQ(box, first) << "the same letters at every place: " << position;
            std::vector<cv::Mat> channels;
            cv::split(saved, channels);
            EXPECT_EQ(cv::countNonZero(channels[0] < 255), 0) << "red keeps all of white's red";
            EXPECT_GT(cv::countNonZero(channels[1] < 40), 10);
            EXPECT_EQ(difference(channels[1], channels[2]), 0);
        }
        // A font's bearings: a letter begins a little right of its pen, a capital ends a little below the
        // top.
        EXPECT_TRUE(first.x >= 0 && first.x <= 4 && first.y >= -2 && first.y <= 6) << first;
    }
    for (const int nowhere : {0, 5, -1}) {
        settings::watermarkPos.write(settings, nowhere);
        EXPECT_TRUE(otherThan(captured(paper, cropping::none), white).empty()) << nowhere;
    }
    settings::watermarkPos.write(settings, 1);
    settings::watermarkText.write(settings, QString());
    EXPECT_TRUE(otherThan(captured(paper, cropping::none), white).empty());
}

TEST_F(CapturePixels, TheWatermarkIsStampedOnWhatTheOtherStepsLeave)
{
    settings::watermarkPos.write(settings, 4);
    settings::watermarkText.write(settings, QStringLiteral("LE"));
    const cv::Mat paper(480, 640, CV_8UC3, cv::Scalar(214, 208, 190));
    const cv::Mat saved = captured(paper, cropping::selection, 2, QRect(100, 50, 400, 300));
    const cv::Rect box = otherThan(saved, white);
    EXPECT_GE(box.x, 400 - 120 - 40);
    EXPECT_GE(box.y, 300 - 120 - 2);
    EXPECT_DOUBLE_EQ(cv::mean(saved(box))[0], 255) << "red, although the page is black and white";
}

TEST_F(CapturePixels, TheWatermarkTellsTheTimeWhenItIsAsked)
{
    settings::watermarkPos.write(settings, 1);
    settings::watermarkText.write(settings, QStringLiteral("not this"));
    settings::watermarkTime.write(settings, true);
    const cv::Mat paper(200, 640, CV_8UC3, white);
    QDateTime time = QDateTime::currentDateTime();
    const cv::Mat saved = captured(paper, cropping::none);
    bool isTime = false;
    for (const QDateTime end = QDateTime::currentDateTime().addSecs(1); time <= end; time = time.addSecs(1)) {
        Image wanted;
        wanted.pixels = paper.clone();
        mirvak::drawText(wanted,
                         time.toString(QStringLiteral("yyyyMMddHHmmss")).toStdString(),
                         {100, 100},
                         {20, 0xff0000, 0});
        isTime = isTime || difference(saved, wanted.pixels) == 0;
    }
    EXPECT_TRUE(isTime);
}

TEST_F(CapturePixels, JpegFilesKeepFineDetail)
{
    settings::imageFormat.write(settings, 0);
    const cv::Mat page = officePage();
    EXPECT_LT(difference(captured(page, cropping::none), page, cv::NORM_L1) / (3.0 * page.total()), 1.3)
        << "1.15 levels at quality 95, 1.5 at 90";
}

TEST_F(CapturePixels, FinishedPicturesAreTrimmedOnAllSidesWhenPagesAreCropped)
{
    cv::Mat noise(100, 200, CV_8UC3);
    cv::randu(noise, 0, 256);
    const QImage picture(noise.data, 200, 100, 600, QImage::Format_RGB888);
    for (const int mode : {cropping::none, cropping::deskew, cropping::second, cropping::selection}) {
        settings::deskew.write(settings, mode);
        const auto saved = mirvak::readImage(processor_.imageSave(picture, 3).toStdString());
        ASSERT_TRUE(saved);
        const cv::Mat wanted = mode == cropping::deskew ? noise(cv::Rect(15, 15, 184, 84)) : noise;
        EXPECT_EQ(difference(saved->pixels, wanted), 0) << mode;
        EXPECT_NEAR(saved->dpi, mirvak::cameraDpi, 0.02);
    }
}

} // namespace

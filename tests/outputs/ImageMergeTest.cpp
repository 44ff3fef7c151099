#include "ImageMerge.h"

#include "../ui/AnsweredDialogs.h"
#include "Part.h"
#include "TempDir.h"
#include "Words.h"

#include <QDir>
#include <QImageReader>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

namespace {

constexpr int jpegNoise = 6; // flat colours survive default quality within this

bool isNear(const QColor& a, const QColor& b)
{
    return qAbs(a.red() - b.red()) <= jpegNoise && qAbs(a.green() - b.green()) <= jpegNoise &&
           qAbs(a.blue() - b.blue()) <= jpegNoise;
}

const QColor front(180, 60, 40);
const QColor back(40, 90, 170);

class ImageMergeTest : public ::testing::Test
{
protected:
    static QPixmap solid(int width, int height, const QColor& colour)
    {
        QPixmap picture(width, height);
        picture.fill(colour);
        return picture;
    }
    void open(const QString& savePath)
    {
        dialog.setMergeImage(solid(400, 600, front), solid(500, 300, back), savePath);
        dialog.show();
    }
    template <class Control> Control* control(const char* name) const { return part<Control>(dialog, name); }
    void click(const char* name) const
    {
        QTest::mouseClick(control<QAbstractButton>(name), Qt::LeftButton, Qt::NoModifier, {12, 12});
    }
    QString path(const char* name) const { return QString::fromStdString(folder.file(name)); }
    QStringList files() const
    {
        return QDir(QString::fromStdString(folder.path())).entryList(QDir::Files | QDir::Hidden);
    }
    /// The shown colour at a part (0 to 1) of the preview.
    QColor shownAt(double x, double y)
    {
        QCoreApplication::processEvents();
        const QRect area = control<QWidget>("framePreview")->geometry();
        const QPoint point(int(area.left() + area.width() * x), int(area.top() + area.height() * y));
        return dialog.grab().toImage().pixelColor(point);
    }

    const TempDir folder;
    AnsweredDialogs answers;
    QWidget window;
    ImageMerge dialog{&window};
    QSignalSpy saved{&dialog, &ImageMerge::postSynthesisPath};
};

} // namespace

TEST_F(ImageMergeTest, SavesTheFullPictureAsJpegUnderAFreeName)
{
    open(path("IMAGE_002.png")); // the name may follow another format
    auto* slider = control<QSlider>("sliderSpace");
    slider->setFocus();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(slider, Qt::Key_PageUp);
    EXPECT_EQ(control<QLabel>("labelNumber")->text(), QStringLiteral("30"));
    click("buttonSave");
    EXPECT_FALSE(dialog.isVisible());
    ASSERT_EQ(saved.count(), 1);
    EXPECT_EQ(saved[0][0].toString(), path("IMAGE_002.png"));
    EXPECT_EQ(files(), QStringList{QStringLiteral("IMAGE_002.png")}) << "and no temporary file";
    QImageReader reader(path("IMAGE_002.png"));
    reader.setDecideFormatFromContent(true);
    EXPECT_EQ(reader.format(), QByteArray("jpeg"));
    const QImage picture = reader.read();
    EXPECT_EQ(picture.size(), QSize(200 + 30 + 500, 300));
    EXPECT_NEAR(picture.dotsPerMeterX(), 8464, 25) << "a JPEG counts whole dots an inch";
    EXPECT_NEAR(picture.dotsPerMeterY(), 8464, 25);
    for (const auto& [x, colour] :
         {std::pair(8, front), {191, front}, {215, QColor(Qt::white)}, {239, back}, {721, back}})
        EXPECT_TRUE(isNear(picture.pixelColor(x, 150), colour))
            << x << qPrintable(picture.pixelColor(x, 150).name());
    click("buttonSave");
    EXPECT_EQ(saved.count(), 1) << "there is nothing to save any more";

    open(path("IMAGE_007.jpg"));
    folder.write("IMAGE_007.jpg", "a capture");
    click("buttonSave");
    EXPECT_EQ(QFileInfo(path("IMAGE_007.jpg")).size(), 9);
    EXPECT_FALSE(QImage(path("IMAGE_008.jpg")).isNull());
    ASSERT_EQ(saved.count(), 2);
    EXPECT_EQ(saved[1][0].toString(), path("IMAGE_008.jpg"));
}

TEST_F(ImageMergeTest, StacksKeepsThePixelsOfWhatNeedsNoScalingAndReadsFiles)
{
    QPixmap fine(64, 40);
    QImage chequered = fine.toImage().convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < chequered.height(); ++y)
        for (int x = 0; x < chequered.width(); ++x)
            chequered.setPixel(x, y, (x + y) % 2 ? 0xffffffff : 0xff000000);
    dialog.setMergeImage(solid(64, 20, back), QPixmap::fromImage(chequered), path("up.jpg"));
    dialog.show();
    click("radioUpDown");
    click("buttonSave");
    const QImage picture(path("up.jpg"));
    ASSERT_EQ(picture.size(), QSize(64, 60));
    int sharp = 0; // a picture that was smoothed would be grey all over
    for (int y = 20; y < 60; ++y)
        for (int x = 0; x < 64; ++x)
            sharp += qAbs(qGray(picture.pixel(x, y)) - 128) > 80;
    EXPECT_GT(sharp, 64 * 40 * 9 / 10);

    ASSERT_TRUE(solid(40, 20, front).save(path("front.png")) && solid(60, 20, back).save(path("back.png")));
    dialog.setMergeImage(path("front.png"), path("back.png"), path("both.jpg"));
    dialog.show();
    click("radioLeftRight");
    click("buttonSave");
    EXPECT_EQ(QImage(path("both.jpg")).size(), QSize(100, 20));

    dialog.setMergeImage(solid(80, 40, Qt::transparent), solid(40, 20, back), path("clear.jpg"));
    dialog.show();
    click("buttonSave");
    const QImage clear(path("clear.jpg"));
    ASSERT_EQ(clear.size(), QSize(80, 20));
    EXPECT_TRUE(isNear(clear.pixelColor(10, 10), Qt::white)) << "what shines through is paper";
    EXPECT_TRUE(isNear(clear.pixelColor(70, 10), back));
}

TEST_F(ImageMergeTest, ThePreviewFollowsTheControls)
{
    open(path("a.jpg"));
    EXPECT_TRUE(isNear(shownAt(0.15, 0.5), front));
    EXPECT_TRUE(isNear(shownAt(0.85, 0.5), back));
    dialog.setMergeImage(solid(400, 600, back), solid(500, 300, front), path("b.jpg"));
    EXPECT_TRUE(isNear(shownAt(0.15, 0.5), back)) << "another pair";
    EXPECT_TRUE(isNear(shownAt(0.85, 0.5), front));
    open(path("a.jpg"));
    control<QSlider>("sliderSpace")->setValue(200);
    const double gapMiddle = (200 + 100) / 900.0;
    EXPECT_EQ(shownAt(gapMiddle, 0.5), QColor(Qt::white));
    click("radioUpDown");
    EXPECT_TRUE(isNear(shownAt(0.5, 0.2), front));
    EXPECT_TRUE(isNear(shownAt(0.5, 0.9), back));
    click("radioLeftRight");
    dialog.resize(dialog.width() + 200, dialog.height());
    EXPECT_EQ(shownAt(gapMiddle, 0.5), QColor(Qt::white));
}

TEST_F(ImageMergeTest, WithoutAPairThereIsNothingToSaveAndEveryWayOutDropsIt)
{
    const QColor empty = [&] {
        dialog.show();
        return shownAt(0.1, 0.1);
    }();
    const auto expectNothing = [&](const char* what) {
        dialog.show();
        EXPECT_EQ(shownAt(0.15, 0.1), empty) << what;
        control<QSlider>("sliderSpace")->setValue(control<QSlider>("sliderSpace")->value() + 1);
        EXPECT_FALSE(control<QPushButton>("buttonSave")->isEnabled()) << what;
        click("buttonSave");
        EXPECT_TRUE(dialog.isVisible()) << what;
    };
    open(path("a.jpg")); // must not come back as the next pair's result
    dialog.setMergeImage(solid(40, 40, front), QPixmap(), path("b.jpg"));
    expectNothing("no second picture");
    open(path("a.jpg"));
    dialog.setMergeImage(QPixmap(), solid(40, 40, back), path("b.jpg"));
    expectNothing("no first picture");
    dialog.setMergeImage(path("gone.jpg"), path("gone too.jpg"), path("b.jpg"));
    expectNothing("no such files");
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(saved.count(), 0);
    EXPECT_TRUE(answers.messages.isEmpty());
    dialog.close();

    const std::pair<const char*, std::function<void()>> ways[] = {
        {"Cancel", [&] { click("buttonCancel"); }}, {"the title bar", [&] { click("buttonClose"); }}};
    for (const auto& [name, leave] : ways) {
        open(path("a.jpg"));
        leave();
        EXPECT_FALSE(dialog.isVisible()) << name;
        dialog.MergePix();
        EXPECT_FALSE(control<QPushButton>("buttonSave")->isEnabled()) << name;
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ImageMergeTest, AFailureIsSaidAndLeavesNoFile)
{
    open(path("no folder/a.jpg"));
    testing::internal::CaptureStderr();
    click("buttonSave");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("no folder/a.jpg"), std::string::npos);
    EXPECT_EQ(answers.messages, QStringList{QStringLiteral("Merge Images failed!")});
    EXPECT_EQ(saved.count(), 0);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ImageMergeTest, FitsTheResultIntoTheMiddle)
{
    QRect place;
    dialog.CalcDispRect(QRect(10, 20, 400, 300), 800, 400, place);
    EXPECT_EQ(place, QRect(10, 70, 400, 200));
    dialog.CalcDispRect(QRect(10, 20, 400, 300), 100, 300, place);
    EXPECT_EQ(place, QRect(160, 20, 100, 300));
    dialog.CalcDispRect(QRect(0, 0, 40, 30), 30000, 10, place);
    EXPECT_EQ(place.size(), QSize(40, 1)) << "a sliver is still seen";
    dialog.CalcDispRect(QRect(0, 0, 40, 30), 0, 10, place);
    EXPECT_TRUE(place.isNull());
}

TEST_F(ImageMergeTest, FitsInEveryLanguage)
{
    expectRoomForWords([] { return std::make_unique<ImageMerge>(); });
}

// Peripherals that identify people, as the window's user meets them.
#include "WindowFixture.h"

#include "AutoScan.h"
#include "FaceVerify.h"
#include "FaceVideo.h"
#include "FignerPrint.h"
#include "Part.h"

namespace {

class IdentityWindowTest : public LumroScannerTest
{
protected:
    template <class Window> static Window* shownWindow()
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<Window*>(window))
                return found;
        return nullptr;
    }
};

TEST_F(IdentityWindowTest, AFingerprintGoesIntoTheStripForItsOwnerAlone)
{
    std::filesystem::create_directory(folder().file("prints"));
    solid(128, 90, Qt::darkGray).save(QString::fromStdString(folder().file("prints/1.png")));
    otherDevices = "fingerprint = { prints = \"prints\"; delay = 0.0; };";
    useDesk(""); // it needs no camera
    show();
    window_->setMergePending(true);
    click("btnFingerPrint");
    EXPECT_TRUE(messages_.contains(QStringLiteral("Please complete the image merge first!")));
    EXPECT_EQ(shownWindow<FignerPrint>(), nullptr);
    window_->setMergePending(false);
    click("btnFingerPrint");
    auto* dialog = shownWindow<FignerPrint>();
    ASSERT_TRUE(dialog && dialog->isVisible());
    QTest::mouseClick(part<QPushButton>(*dialog, "buttonCapture"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 1; }, 10000));
    ASSERT_EQ(files().size(), 1);
    const QString file = pictures() + QLatin1Char('/') + files().first();
    EXPECT_EQ(QImage(file).pixelColor(128, 180), QColor(Qt::darkGray));
    EXPECT_EQ(QFile::permissions(file) & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);

    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    click("btnFingerPrint");
    EXPECT_TRUE(dialog->isVisible()) << "the same one again";
    std::filesystem::remove(folder().file("prints/1.png")); // no finger comes any more
    QTest::mouseClick(part<QPushButton>(*dialog, "buttonCapture"), Qt::LeftButton);
    window_->close(); // while it polls
    window_.reset();
    EXPECT_EQ(files().size(), 1);
}

TEST_F(IdentityWindowTest, TheFaceWindowTakesTheSecondCameraAndGoesWithTheProgram)
{
    const std::string cameras = camera() + ", " + camera("person", Qt::red, 2);
    ASSERT_TRUE(shows(cameras)); // without a reader of cards
    click("btnFace");
    EXPECT_TRUE(
        messages_.join(QLatin1Char('|')).contains(QStringLiteral("Init IDCard failed,this device may")));
    window_.reset();
    EXPECT_EQ(shownWindow<FaceVerify>(), nullptr);

    std::filesystem::create_directory(folder().file("cards"));
    otherDevices = "idcard = { cards = \"cards\"; };";
    ASSERT_TRUE(shows(cameras));
    window_->onAssistCheacked(true);
    click("btnAutoScanner");
    click("btnFace");
    EXPECT_EQ(shownWindow<FaceVerify>(), nullptr) << "the timed scan has the camera";
    window_->findChild<AutoScan*>()->reject();
    for (int time = 0; time < 2; ++time) {
        click("btnFace");
        auto* face = shownWindow<FaceVerify>();
        ASSERT_TRUE(face && face->isVisible());
        const auto showsPerson = [face] {
            const QImage video = part<FaceVideo>(*face, "video")->grab().toImage();
            return video.pixelColor(video.rect().center()).red() > 200;
        };
        EXPECT_TRUE(QTest::qWaitFor(showsPerson, 10'000)) << "which was the second camera's picture before";
        if (time == 0)
            face->close();
        EXPECT_TRUE(time == 1 || QTest::qWaitFor([] { return !shownWindow<FaceVerify>(); }));
    }
    window_.reset(); // with it open
    EXPECT_EQ(shownWindow<FaceVerify>(), nullptr);
}

} // namespace

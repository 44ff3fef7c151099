// Peripherals that identify people, as the window's user meets them.
#include "WindowFixture.h"

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
    EXPECT_FALSE(dialog->isModal());
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

} // namespace

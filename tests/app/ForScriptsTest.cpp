// What the program tells the scripts that work or measure it.
#include "WindowFixture.h"

#include "StartReport.h"
#include "UiMap.h"

#include <QComboBox>
#include <QMenu>
#include <QTest>

#include <algorithm>

namespace {

class UiMapTest : public ::testing::Test
{
protected:
    UiMapTest()
    {
        setenv("LUMRO_UI_MAP", folder.file("map").c_str(), 1);
        UiMap::startIfWanted(*qApp);
    }
    ~UiMapTest() override
    {
        delete qApp->findChild<UiMap*>();
        unsetenv("LUMRO_UI_MAP");
    }
    /// Whether the map comes to hold exactly one such line.
    bool tells(const QString& line) const
    {
        return QTest::qWaitFor([&] { return lines().count(line) == 1; }, 20000);
    }
    QStringList lines() const
    {
        return QString::fromStdString(folder.content("map")).split(QLatin1Char('\n'));
    }
    bool names(const char* widget) const
    {
        const QStringList all = lines();
        return std::any_of(all.begin(), all.end(), [&](const QString& line) {
            return line.startsWith(QLatin1String(widget) + QLatin1Char(' '));
        });
    }

    const TempDir folder;
};

} // namespace

TEST_F(UiMapTest, EachNamedPartHasItsPlaceOnTheScreenAsFarAsItIsShown)
{
    QWidget window(nullptr, Qt::Window | Qt::FramelessWindowHint);
    window.setObjectName(QStringLiteral("Desk"));
    window.setGeometry(40, 30, 300, 200);
    QWidget frame(&window);
    frame.setGeometry(20, 10, 100, 100);
    QPushButton wide(&frame), hidden(&window);
    wide.setObjectName(QStringLiteral("Open path"));
    wide.setGeometry(60, 50, 90, 20); // 40 px of it lie in the frame
    hidden.setObjectName(QStringLiteral("hidden"));
    hidden.hide();
    QComboBox chooser(&window);
    chooser.setObjectName(QStringLiteral("chooser"));
    chooser.setGeometry(10, 150, 120, 24);
    chooser.addItems({QStringLiteral("a"), QStringLiteral("b")});
    window.show();
    EXPECT_TRUE(tells(QStringLiteral("Desk 40 30 300 200 Desk 1")));
    EXPECT_TRUE(tells(QStringLiteral("Open_path 120 90 40 20 Desk 1")));
    EXPECT_TRUE(tells(QStringLiteral("chooser 50 180 120 24 Desk 1")));
    EXPECT_FALSE(names("hidden") || names("chooser.0"));
    wide.setEnabled(false);
    wide.move(10, 50);
    EXPECT_TRUE(tells(QStringLiteral("Open_path 70 90 90 20 Desk 0"))) << "it follows";
    chooser.showPopup();
    EXPECT_TRUE(QTest::qWaitFor([&] { return names("chooser.0") && names("chooser.1"); }, 20000));
    chooser.hidePopup();

    QMenu menu(&window);
    menu.addAction(QStringLiteral("first"));
    menu.addSeparator();
    QAction* second = menu.addAction(QStringLiteral("second"));
    second->setEnabled(false);
    menu.popup({100, 60});
    const QRect at = menu.actionGeometry(second).translated(menu.mapToGlobal({0, 0}));
    EXPECT_TRUE(tells(QStringLiteral("menu.1 %1 %2 %3 %4 menu 0")
                          .arg(at.x())
                          .arg(at.y())
                          .arg(at.width())
                          .arg(at.height())));
    menu.close();
    window.close();
    EXPECT_EQ(folder.names(), std::vector<std::string>{"map"}) << "nothing half";
}

TEST_F(LumroScannerTest, TheFirstPaintedPictureIsReportedOnceAndOnlyToWhoAsks)
{
    ASSERT_TRUE(shows(camera()));
    for (const bool isWanted : {true, false}) {
        if (isWanted)
            setenv("LUMRO_START_REPORT", "1", 1);
        const StartReport report(view());
        unsetenv("LUMRO_START_REPORT");
        ::testing::internal::CaptureStdout();
        for (int i = 0; i < 3; ++i) {
            view().repaint();
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), isWanted ? "first picture painted\n" : "");
    }
}

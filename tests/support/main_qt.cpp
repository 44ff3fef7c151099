// One start for all tests with the toolkit: no display, settings in a throw-away folder, a fixed locale, and
// a failure when a test leaves a window open.
#include "PixelThreads.h"
#include "QueuedCalls.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QWidget>

#include <cstdlib>

namespace {

class NoWindowLeft : public ::testing::EmptyTestEventListener
{
    void OnTestEnd(const ::testing::TestInfo& info) override
    {
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->windowType() != Qt::Desktop) {
                ADD_FAILURE() << info.test_suite_name() << "." << info.name() << " left the window "
                              << window->metaObject()->className() << " open";
            }
        }
    }
};

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QTemporaryDir home; // settings and documents of the test run, gone afterwards
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        setenv(variable, home.path().toUtf8().constData(), 1);
    singleThreadedPixels();
    showQueuedCalls();
    unsetenv("LUMRO_DESK"); // a test that wants virtual devices brings its own
    QLocale::setDefault(QLocale::c());
    const QApplication app(argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new NoWindowLeft);
    return RUN_ALL_TESTS();
}

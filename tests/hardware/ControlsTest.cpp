// What the program sets reaches the camera, and again after the cable was pulled: a camera without power has
// forgotten it.
#include "CameraControls.h"
#include "CameraSession.h"
#include "LabCamera.h"
#include "waitFor.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSettings>

#include <cstdlib>
#include <filesystem>
#include <memory>

namespace {

bool eventually(const std::function<bool()>& condition)
{
    return waitFor([&] {
        QCoreApplication::processEvents();
        return condition();
    });
}

TEST(Controls, TheCameraReceivesWhatIsSetAndAgainAfterAnUnplug)
{
    int count = 1;
    char name[] = "controls", *arguments[] = {name};
    const QCoreApplication application(count, arguments);
    const auto folder = std::filesystem::temp_directory_path() / "lumro-lab-controls";
    std::filesystem::remove_all(folder);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QString::fromStdString(folder.string()));
    const LabCameraModel model{"1234abcd", "Lab Doc Camera", 0, {"640x480"}};
    auto plugged = std::make_unique<LabCamera>(model);

    MirvakCamera camera;
    CameraSession session(
        camera, [](void*, void*, int, int, int, void*) {}, nullptr);
    CameraControls controls(camera, session);
    const auto open = [&] {
        return eventually([&] {
            return session.select(session.cameras().value(0).identity) == CameraSession::OpenResult::Ok &&
                   session.start(0, QStringLiteral("640*480")) == CameraSession::OpenResult::Ok;
        });
    };
    session.discover();
    ASSERT_TRUE(open());
    controls.watch(true);
    ASSERT_TRUE(eventually([&] { return findControl(controls.list(), MIRVAK_ANTI_FLICKER) != nullptr; }));
    EXPECT_EQ(controls.list().size(), 13);
    EXPECT_TRUE(findControl(controls.list(), MIRVAK_FOCUS)->isHeld);
    EXPECT_EQ(findControl(controls.list(), MIRVAK_ANTI_FLICKER)->entries, 0x7);
    EXPECT_EQ(camera.MirvakDevice_SetControl(session.device(), MIRVAK_FOCUS, 10), MIRVAK_BUSY);

    // Entities and selectors as the camera tells them; manual exposure is its mode 1.
    const std::tuple<int, int, std::string> sets[] = {{MIRVAK_FOCUS_AUTO, 0, "control 1 8 0"},
                                                      {MIRVAK_FOCUS, 120, "control 1 6 120"},
                                                      {MIRVAK_EXPOSURE_AUTO, 0, "control 1 2 1"},
                                                      {MIRVAK_EXPOSURE_TIME, 333, "control 1 4 333"},
                                                      {MIRVAK_BRIGHTNESS, 200, "control 2 2 200"},
                                                      {MIRVAK_ANTI_FLICKER, 2, "control 2 5 2"}};
    for (const auto& [control, value, report] : sets) {
        controls.set(control, value);
        EXPECT_EQ(plugged->waitForReport(report), report);
        EXPECT_TRUE(eventually([&, wanted = value, c = control] {
            const MirvakControlInfo* info = findControl(controls.list(), c);
            return info && info->value == wanted && !info->isHeld;
        }));
    }
    controls.watch(false);
    plugged->unplug();
    session.closeCamera();
    ASSERT_TRUE(eventually([&] { return session.cameras().isEmpty(); }));

    plugged = std::make_unique<LabCamera>(model);
    ASSERT_TRUE(eventually([&] { return !session.cameras().isEmpty(); }));
    ASSERT_TRUE(open());
    for (const auto& [control, value, report] : sets)
        EXPECT_EQ(plugged->waitForReport(report), report) << "set again, the switch before its value";
    controls.resetAll();
    EXPECT_EQ(plugged->waitForReport("control 2 2 128"), "control 2 2 128");
    EXPECT_EQ(plugged->waitForReport("control 1 8 1"), "control 1 8 1");
}

} // namespace

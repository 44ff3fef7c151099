// What is set at a camera stays set: for the frames, in the store, and when the camera comes back without
// power in between.
#include "CameraControls.h"

#include "CameraSession.h"
#include "ControlStore.h"
#include "DeskFixture.h"

#include <QAbstractEventDispatcher>
#include <QPainter>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <atomic>
#include <mutex>

namespace {

class CameraControlsTest : public DeskTest
{
protected:
    CameraControlsTest() { ConfigSettings().GetSettings()->clear(); }

    static void onFrame(void* image, void*, int, int width, int height, void* self)
    {
        auto* test = static_cast<CameraControlsTest*>(self);
        if (!image)
            return;
        std::vector<unsigned char> rgb(static_cast<size_t>(width) * static_cast<size_t>(height) * 3);
        test->camera_.MirvakImage_GetImageRGBData(image, rgb.data());
        test->level_ = rgb[0];
        ++test->frames_;
    }
    void lay(const std::string& controls = "true")
    {
        QImage picture = solid(640, 480, Qt::darkGray); // 128
        QPainter stripes(&picture);
        for (int x = 320; x < 640; x += 8)
            stripes.fillRect(x, 0, 4, 480, Qt::white);
        stripes.end();
        desk_ = DeskTest::camera("controls = " + controls + ";");
        useDesk(desk_, picture);
        session_.discover();
        open();
    }
    /// Asks, and returns when the answer is on its way to this thread.
    static void awaitAnswer(const std::function<void()>& ask)
    {
        QCoreApplication::processEvents();
        ask();
        auto* events = QAbstractEventDispatcher::instance();
        for (int i = 0; i < 6000 && !events->hasPendingEvents(); ++i)
            QThread::msleep(5);
        ASSERT_TRUE(events->hasPendingEvents());
    }
    void open()
    {
        ASSERT_EQ(session_.select(session_.cameras().value(0).identity), CameraSession::OpenResult::Ok);
        frames_ = 0;
        ASSERT_EQ(session_.start(0, QStringLiteral("640*480")), CameraSession::OpenResult::Ok);
    }
    /// Takes the camera off the desk and puts it back: it forgets what was set.
    void unplugAndOpen()
    {
        changeDesk("");
        ASSERT_TRUE(waitFor([this] { return session_.cameras().isEmpty(); }));
        session_.closeCamera();
        changeDesk(desk_);
        ASSERT_TRUE(waitFor([this] { return !session_.cameras().isEmpty(); }));
        open();
    }
    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 15000); }
    bool listed()
    {
        controls_.watch(true);
        return waitFor([this] { return !controls_.list().isEmpty(); });
    }
    int valueOf(int control) const
    {
        const MirvakControlInfo* info = findControl(controls_.list(), control);
        return info ? info->value : -1;
    }
    bool isHeld(int control) const { return findControl(controls_.list(), control)->isHeld; }
    bool levelBecomes(int level)
    {
        return waitFor([=] { return std::abs(level_ - level) < 3; });
    }
    QMap<int, int> kept() { return ControlStore(session_.cameras().value(0).identity).values(); }

    std::string desk_;
    MirvakCamera camera_;
    std::atomic<int> level_{0}, frames_{0};
    CameraSession session_{camera_, onFrame, this};
    CameraControls controls_{camera_, session_};
};

TEST_F(CameraControlsTest, WhatIsSetIsKeptForThisCameraAndSetAgain)
{
    lay();
    QSignalSpy changed(&controls_, &CameraControls::changed);
    ASSERT_TRUE(listed());
    for (int i = 0; i < 2; ++i)
        awaitAnswer([this] { controls_.watch(true); });
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.count(), 1) << "only of what is new";
    EXPECT_TRUE(kept().isEmpty()) << "looking keeps nothing";
    for (int value = 1; value <= 40; ++value)
        controls_.set(MIRVAK_BRIGHTNESS, value); // as a slider that is drawn
    EXPECT_EQ(valueOf(MIRVAK_BRIGHTNESS), 40);
    EXPECT_EQ(kept().value(MIRVAK_BRIGHTNESS), 40) << "before the camera has answered";
    EXPECT_TRUE(levelBecomes(168));
    controls_.set(MIRVAK_GAIN, 9999);
    EXPECT_TRUE(waitFor([this] { return valueOf(MIRVAK_GAIN) == 255; })) << "what the camera made of it";
    EXPECT_EQ(kept().value(MIRVAK_GAIN), 255);
    controls_.set(MIRVAK_GAIN, 0);
    EXPECT_TRUE(levelBecomes(168));

    controls_.watch(false);
    unplugAndOpen();
    EXPECT_TRUE(waitFor([this] { return frames_ > 0; }));
    EXPECT_NEAR(level_, 168, 3) << "the first frame already";
    ControlStore(QStringLiteral("another/camera")).keep(MIRVAK_BRIGHTNESS, -60);
    ControlStore(QStringLiteral("another")).forget();
    EXPECT_EQ(kept(), (QMap<int, int>{{MIRVAK_BRIGHTNESS, 40}, {MIRVAK_GAIN, 0}}));
    EXPECT_EQ(ControlStore(QStringLiteral("another/camera")).values().value(MIRVAK_BRIGHTNESS), -60);
    ConfigSettings file; // as an earlier version or a hand has written it
    for (const auto& [key, value] :
         {std::pair("Exposure_Time", "78"), {"Brightness", "bright"}, {"White_Balance", "4100"}})
        file.GetSettings()->setValue(QStringLiteral("Camera_old/") + QLatin1String(key),
                                     QLatin1String(value));
    EXPECT_EQ(ControlStore(QStringLiteral("old")).values(),
              (QMap<int, int>{{MIRVAK_EXPOSURE_TIME, 78}, {MIRVAK_WHITE_BALANCE, 4100}}));
}

TEST_F(CameraControlsTest, AnAutomaticIsSwitchedOffWithWhatItHadFound)
{
    lay();
    ASSERT_TRUE(listed());
    bool isShownHeld = true;
    QObject::connect(&controls_, &CameraControls::changed, &session_, [&] {
        isShownHeld = controls_.list().isEmpty() || isHeld(MIRVAK_EXPOSURE_TIME);
    });
    EXPECT_TRUE(isHeld(MIRVAK_EXPOSURE_TIME));
    controls_.set(MIRVAK_EXPOSURE_AUTO, 0);
    EXPECT_TRUE(waitFor([&] { return !isShownHeld; })) << "whoever shows them is told";
    EXPECT_EQ(kept(), (QMap<int, int>{{MIRVAK_EXPOSURE_AUTO, 0}, {MIRVAK_EXPOSURE_TIME, 156}}));
    controls_.set(MIRVAK_EXPOSURE_TIME, 78);
    EXPECT_TRUE(levelBecomes(64));
    unplugAndOpen();
    EXPECT_TRUE(levelBecomes(64)) << "the switch before its value";

    ASSERT_TRUE(listed());
    controls_.resetAll();
    EXPECT_TRUE(levelBecomes(128));
    EXPECT_TRUE(waitFor([this] { return isHeld(MIRVAK_EXPOSURE_TIME); }));
    EXPECT_TRUE(kept().isEmpty());
    controls_.set(MIRVAK_BRIGHTNESS, 30);
    controls_.resetAll(); // before the camera has answered
    EXPECT_TRUE(waitFor([this] { return valueOf(MIRVAK_BRIGHTNESS) == 0; }));
    EXPECT_TRUE(kept().isEmpty());
}

TEST_F(CameraControlsTest, AFoundFocusIsKeptAndAFailedSearchIsTold)
{
    lay("[ \"focus_auto\", \"focus\" ]");
    ASSERT_TRUE(listed());
    const QSignalSpy ends(&controls_, &CameraControls::focused);
    const auto focus = [&](double x) {
        const int before = ends.count();
        controls_.focusAt(x, 0.5);
        return waitFor([&] { return ends.count() > before; }) && ends.last().at(0).toBool();
    };
    EXPECT_FALSE(focus(0.2)) << "plain grey";
    EXPECT_TRUE(kept().isEmpty());
    EXPECT_TRUE(focus(0.8));
    EXPECT_EQ(kept().value(MIRVAK_FOCUS_AUTO, -1), 0);
    EXPECT_NEAR(kept().value(MIRVAK_FOCUS), 120, 5);
    controls_.watch(false);
    awaitAnswer([this] { controls_.watch(true); });
    EXPECT_FALSE(focus(0.2)) << "what was so before the search is not its end";

    int told = ends.count();
    controls_.set(MIRVAK_FOCUS, 7);
    controls_.focusAt(0.8, 0.5);
    controls_.resetAll();
    EXPECT_EQ(ends.count(), ++told) << "nobody waits on";
    EXPECT_TRUE(waitFor([this] { return valueOf(MIRVAK_FOCUS_AUTO) == 1; }));
    EXPECT_TRUE(kept().isEmpty()) << "nor is kept what that search had come to";
    EXPECT_EQ(ends.count(), told);
    EXPECT_TRUE(focus(0.8));
    told = ends.count();
    controls_.focusAt(0.8, 0.5);
    int shown = -1;
    const auto show = [&] { shown = controls_.list().size(); };
    const auto showing = QObject::connect(&controls_, &CameraControls::changed, &session_, show);
    session_.closeCamera();
    QObject::disconnect(showing);
    EXPECT_EQ(shown, 0);
    EXPECT_FALSE(controls_.isFocusing());
    EXPECT_EQ(ends.count(), told + 1) << "whoever waits for the lens is told";
    controls_.set(MIRVAK_FOCUS, 1);
    EXPECT_NEAR(kept().value(MIRVAK_FOCUS), 120, 5) << "nothing to set without a camera";
}

TEST_F(CameraControlsTest, WhatACameraAnsweredIsNotTakenForTheAnswerOfTheNextOne)
{
    lay();
    ASSERT_TRUE(listed());
    controls_.watch(false);
    awaitAnswer([this] { controls_.set(MIRVAK_BRIGHTNESS, 7); });
    open();
    EXPECT_TRUE(waitFor([this] { return frames_ > 20; })); // longer than from one look to the next
    EXPECT_TRUE(controls_.list().isEmpty()) << "this one has not been asked";
    ControlStore(session_.cameras().value(0).identity).forget();
    ASSERT_TRUE(listed());
    EXPECT_TRUE(kept().isEmpty()) << "nor has anything been set at it";
}

TEST_F(CameraControlsTest, RequestsThatWaitAreSummedUpByControlAndForgottenWithTheirCamera)
{
    useDesk(camera("controls = true;") + ", " + camera("controls = true;"));
    ASSERT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK);
    void* const first = camera_.MirvakDevice_Create(0);
    void* const second = camera_.MirvakDevice_Create(1);
    const auto valueAt = [this](void* device, int control) {
        MirvakControlInfo info{};
        for (int i = 0; camera_.MirvakDevice_GetControl(device, i, info) == MIRVAK_OK; ++i)
            if (info.control == control)
                return info.value;
        return -1000;
    };
    std::mutex busy;
    std::atomic<int> told{0};
    {
        ControlLink link(camera_, [&](const ControlReport&) {
            ++told;
            const std::lock_guard untilThen(busy);
        });
        std::unique_lock hold(busy);
        const auto keepBusy = [&](void* device) {
            link.connectTo(device);
            const int before = told;
            link.ask();
            return waitFor([&] { return told > before; });
        };
        ASSERT_TRUE(keepBusy(first));
        link.set(MIRVAK_SATURATION, 90);
        for (const int value : {30, 40})
            link.set(MIRVAK_BRIGHTNESS, value);
        hold.unlock();
        EXPECT_TRUE(waitFor([&] { return told == 2; }));
        EXPECT_EQ(valueAt(first, MIRVAK_SATURATION), 90) << "a request of one control is none of another";
        EXPECT_EQ(valueAt(first, MIRVAK_BRIGHTNESS), 40);
        hold.lock();
        const int delivered = valueAt(second, MIRVAK_BRIGHTNESS);
        ASSERT_TRUE(keepBusy(first));
        link.set(MIRVAK_BRIGHTNESS, 50);
        link.connectTo(second);
        hold.unlock();
        link.ask();
        EXPECT_TRUE(waitFor([&] { return told == 4; }));
        EXPECT_EQ(valueAt(first, MIRVAK_BRIGHTNESS), 40);
        EXPECT_EQ(valueAt(second, MIRVAK_BRIGHTNESS), delivered);
    }
    camera_.MirvakDevice_Release(first);
    camera_.MirvakDevice_Release(second);
}

} // namespace

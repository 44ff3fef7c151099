// What can be set at a camera, as the program does it, with the pictures that follow.
#include "FocusSearch.h"
#include "FrameCollector.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <thread>

namespace {

/// Fine stripes on the left, a plain warm colour on the right.
cv::Mat scene()
{
    cv::Mat picture(cv::Size(320, 240), CV_8UC3, cv::Scalar(150, 110, 80));
    for (int x = 0; x < 160; x += 8)
        picture.colRange(x, x + 4).setTo(cv::Scalar::all(210));
    return picture;
}

class Controls : public ::testing::Test
{
protected:
    ~Controls() override
    {
        camera.MirvakDevs_Deinit();
        unsetenv("LUMRO_DESK");
    }

    void open(const std::string& controls)
    {
        folder.write("a.jpg", pictures::jpeg(scene()));
        const std::string text =
            "real = false; cameras = ( { name = \"A\"; source = \"a.jpg\"; fps = 100; controls = " +
            controls + "; } );";
        setenv("LUMRO_DESK", folder.write("desk.cfg", text).c_str(), 1);
        ASSERT_EQ(camera.MirvakDevs_Init(), MIRVAK_OK);
        device = camera.MirvakDevice_Create(0);
        const auto onFrame = [](void* image, void*, int, int, int, void* self) {
            static_cast<FrameCollector*>(self)->take(static_cast<mirvak::Image*>(image));
        };
        frames.onFrame = [this](mirvak::Image& image) {
            const std::lock_guard lock(mutex);
            image.pixels.copyTo(newest);
        };
        ASSERT_EQ(camera.MirvakDevice_StartPreview(device, 2, 0, 2, onFrame, &frames), MIRVAK_OK);
    }
    /// A frame that was taken after this call: one more may be on its way.
    cv::Mat frame()
    {
        EXPECT_TRUE(frames.waitForFrames(frames.frames() + 2));
        const std::lock_guard lock(mutex);
        return newest.clone();
    }
    int set(int control, int value) { return camera.MirvakDevice_SetControl(device, control, value); }
    MirvakControlInfo info(int control)
    {
        MirvakControlInfo info{};
        for (int i = 0; i < camera.MirvakDevice_GetControlCount(device); ++i) {
            if (camera.MirvakDevice_GetControl(device, i, info) == MIRVAK_OK && info.control == control)
                return info;
        }
        ADD_FAILURE() << control << " is not offered";
        return {};
    }
    /// The mean colour of the plain half, and how rough the other one is.
    static cv::Scalar colour(const cv::Mat& picture) { return cv::mean(picture.colRange(200, 300)); }
    static double roughness(const cv::Mat& picture)
    {
        cv::Scalar mean, deviation;
        cv::meanStdDev(picture.colRange(20, 140), mean, deviation);
        return deviation[0];
    }
    int focusOn(double x)
    {
        EXPECT_EQ(camera.MirvakDevice_FocusAt(device, x, 0.5), MIRVAK_OK);
        for (int state = MIRVAK_BUSY;; frame()) {
            state = camera.MirvakDevice_GetFocusState(device);
            if (state != MIRVAK_BUSY || HasFailure())
                return state;
        }
    }

    const TempDir folder;
    std::mutex mutex;
    cv::Mat newest;
    FrameCollector frames;
    MirvakCamera camera;
    void* device = nullptr;
};

} // namespace

TEST_F(Controls, EachChangesThePictureItsOwnWayAndBack)
{
    open("true");
    EXPECT_EQ(camera.MirvakDevice_GetControlCount(device), 13);
    for (const int automatic : {MIRVAK_FOCUS_AUTO, MIRVAK_EXPOSURE_AUTO, MIRVAK_WHITE_BALANCE_AUTO})
        EXPECT_EQ(set(automatic, 0), MIRVAK_OK);
    const cv::Mat before = frame();
    const cv::Scalar plain = colour(before);
    const auto warmth = [](const cv::Scalar& rgb) { return rgb[0] / rgb[2]; };
    const auto saturation = [](const cv::Scalar& rgb) { return rgb[0] - rgb[2]; };
    struct Case
    {
        int control, value;
        std::function<bool(const cv::Mat&)> isRight;
    };
    const Case cases[] = {
        {MIRVAK_FOCUS, 60, [&](auto& p) { return roughness(p) < roughness(before) / 3; }},
        {MIRVAK_EXPOSURE_TIME, 78, [&](auto& p) { return std::abs(colour(p)[1] - plain[1] / 2) < 2; }},
        {MIRVAK_GAIN, 32, [&](auto& p) { return std::abs(colour(p)[1] - plain[1] * 1.5) < 2; }},
        {MIRVAK_WHITE_BALANCE, 6500, [&](auto& p) { return warmth(colour(p)) > warmth(plain) * 1.5; }},
        {MIRVAK_BRIGHTNESS, 40, [&](auto& p) { return std::abs(colour(p)[1] - plain[1] - 40) < 2; }},
        {MIRVAK_CONTRAST, 16, [&](auto& p) { return roughness(p) < roughness(before) * 0.6; }},
        {MIRVAK_SATURATION, 0, [&](auto& p) { return std::abs(saturation(colour(p))) < 2; }},
        {MIRVAK_SHARPNESS, 8, [&](auto& p) { return roughness(p) > roughness(before) * 1.1; }},
        {MIRVAK_BACKLIGHT, 2, [&](auto& p) { return colour(p)[1] > plain[1] + 20; }},
        {MIRVAK_ANTI_FLICKER, 2, [&](auto& p) { return cv::norm(p, before, cv::NORM_INF) == 0; }},
    };
    for (const Case& c : cases) {
        const int standard = info(c.control).standard;
        EXPECT_NE(standard, c.value);
        EXPECT_EQ(set(c.control, c.value), MIRVAK_OK);
        EXPECT_EQ(info(c.control).value, c.value);
        EXPECT_TRUE(c.isRight(frame())) << c.control;
        EXPECT_EQ(set(c.control, standard), MIRVAK_OK);
        EXPECT_EQ(cv::norm(frame(), before, cv::NORM_INF), 0) << c.control;
    }
    set(MIRVAK_CONTRAST, 16);
    const double softer = colour(frame())[1];
    set(MIRVAK_BRIGHTNESS, 40);
    EXPECT_NEAR(colour(frame())[1], softer + 40, 2) << "as bright at every contrast";
}

TEST_F(Controls, WhatAnAutomaticHoldsIsRefusedAndValuesFitTheirRange)
{
    open("[ \"exposure_auto\", \"exposure_time\", \"white_balance\", \"anti_flicker\" ]");
    EXPECT_EQ(camera.MirvakDevice_GetControlCount(device), 4);
    EXPECT_EQ(set(MIRVAK_GAIN, 3), MIRVAK_BAD_ARGUMENT);
    for (const int none : {-1, MIRVAK_ANTI_FLICKER + 1, 99})
        EXPECT_EQ(set(none, 3), MIRVAK_BAD_ARGUMENT) << none;
    EXPECT_TRUE(info(MIRVAK_EXPOSURE_TIME).isHeld);
    EXPECT_EQ(set(MIRVAK_EXPOSURE_TIME, 20), MIRVAK_BUSY);
    EXPECT_EQ(info(MIRVAK_EXPOSURE_TIME).value, 156);
    EXPECT_EQ(set(MIRVAK_EXPOSURE_AUTO, 7), MIRVAK_OK) << "on";
    EXPECT_EQ(info(MIRVAK_EXPOSURE_AUTO).value, 1);
    EXPECT_EQ(set(MIRVAK_EXPOSURE_AUTO, 0), MIRVAK_OK);
    const std::tuple<int, int, int> wanted[] = {{MIRVAK_EXPOSURE_TIME, 0, 1},
                                                {MIRVAK_EXPOSURE_TIME, 99999, 10000},
                                                {MIRVAK_WHITE_BALANCE, 3006, 3010},
                                                {MIRVAK_WHITE_BALANCE, 6504, 6500}};
    for (const auto& [control, value, becomes] : wanted) {
        EXPECT_EQ(set(control, value), MIRVAK_OK);
        EXPECT_EQ(info(control).value, becomes);
    }
    EXPECT_EQ(info(MIRVAK_ANTI_FLICKER).entries, 0x7);
    EXPECT_EQ(set(MIRVAK_EXPOSURE_AUTO, 1), MIRVAK_OK);
    EXPECT_EQ(set(MIRVAK_EXPOSURE_AUTO, 0), MIRVAK_OK);
    EXPECT_EQ(info(MIRVAK_EXPOSURE_TIME).value, 156) << "what the automatic has found";
    EXPECT_EQ(set(MIRVAK_EXPOSURE_TIME, 10000), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakDevice_FocusAt(device, 0.5, 0.5), MIRVAK_NOT_FOUND) << "it has no focus";

    camera.MirvakDevice_Release(device);
    EXPECT_EQ(set(MIRVAK_EXPOSURE_TIME, 5), MIRVAK_BAD_HANDLE);
    device = camera.MirvakDevice_Create(0);
    EXPECT_EQ(info(MIRVAK_EXPOSURE_TIME).value, 10000) << "the camera kept it";
}

TEST_F(Controls, FocusesOnTheChosenPlace)
{
    open("[ \"focus_auto\", \"focus\" ]");
    EXPECT_EQ(focusOn(0.8), MIRVAK_NOT_FOUND) << "nothing but a plain colour there";
    EXPECT_EQ(info(MIRVAK_FOCUS_AUTO).value, 1) << "as it was";
    set(MIRVAK_FOCUS_AUTO, 0);
    set(MIRVAK_FOCUS, 5);
    EXPECT_EQ(camera.MirvakDevice_FocusAt(device, 0.8, 0.5), MIRVAK_OK);
    EXPECT_EQ(focusOn(0.25), MIRVAK_OK) << "in place of the first search";
    EXPECT_NEAR(info(MIRVAK_FOCUS).value, 120, 5);
    EXPECT_EQ(camera.MirvakDevice_FocusAt(device, 0.25, 0.5), MIRVAK_OK);
    EXPECT_EQ(set(MIRVAK_FOCUS, 200), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakDevice_GetFocusState(device), MIRVAK_OK) << "the hand wins";
    EXPECT_EQ(camera.MirvakDevice_FocusAt(device, 0.25, 0.5), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakDevice_StopPreview(device), MIRVAK_OK);
    EXPECT_EQ(info(MIRVAK_FOCUS).value, 200) << "given up without frames";
    EXPECT_EQ(camera.MirvakDevice_GetFocusState(device), MIRVAK_OK) << "nobody waits for it any more";
    EXPECT_EQ(camera.MirvakDevice_FocusAt(device, 1.1, 0.5), MIRVAK_BAD_ARGUMENT);
}

namespace {

/// A lens that is sharp at one position, and counts how often it is moved.
class Lens : public mirvak::CameraDevice
{
public:
    bool isReadable = true;
    int best = 0, step = 1, position = 0, moves = 0;
    int stuckAfter = 1000;        ///< moves
    int automatic = -1;           ///< no automatic
    cv::Rect seen{0, 0, 160, 90}; ///< where there is anything but paper

    /// Frames until the search ends. What is moved is seen after 100 ms and two frames.
    void follow(mirvak::FocusSearch& search, int interval) const
    {
        const int late = std::max(2, 100 / interval);
        std::vector<int> positions;
        auto time = std::chrono::steady_clock::time_point();
        for (int frame = 0; frame < 1000 && search.state() == MIRVAK_BUSY; ++frame) {
            positions.push_back(position);
            mirvak::Image image = picture(positions[size_t(std::max(0, frame - late))]);
            image.taken = time += std::chrono::milliseconds(interval);
            search.look(image);
        }
    }

    const std::vector<mirvak::CameraMode>& modes() const override { return modes_; }
    MirvakResult start(const mirvak::CameraMode&, int) override { return MIRVAK_OK; }
    void stop() override {}
    mirvak::ReadStatus read(mirvak::RawFrame&, std::chrono::milliseconds, const mirvak::WakeEvent&) override
    {
        return mirvak::ReadStatus::Stopped;
    }
    MirvakResult readControl(MirvakControl control, MirvakControlInfo& info) override
    {
        const bool isFocus = control == MIRVAK_FOCUS;
        info = {control, MIRVAK_RANGE, 0, 1000, step, 0, isFocus ? position : automatic, 0, false};
        return isReadable && (isFocus || automatic >= 0) ? MIRVAK_OK : MIRVAK_BAD_ARGUMENT;
    }
    MirvakResult setControl(MirvakControl control, int value) override
    {
        if (control == MIRVAK_FOCUS_AUTO) {
            automatic = value;
            return MIRVAK_OK;
        }
        EXPECT_EQ(value % step, 0);
        if (++moves == stuckAfter)
            return MIRVAK_IO_ERROR;
        position = value;
        return MIRVAK_OK;
    }
    /// Stripes that fade with the distance.
    mirvak::Image picture(int shown) const
    {
        mirvak::Image image;
        image.pixels = cv::Mat(90, 160, CV_8UC3, cv::Scalar::all(128));
        const double off = (shown - best) / 60.0;
        for (int x = 0; x < 160; x += 4)
            image.pixels(cv::Rect(x, 0, 2, 90) & seen).setTo(cv::Scalar::all(128 + 100 / (1 + off * off)));
        return image;
    }

private:
    std::vector<mirvak::CameraMode> modes_;
};

} // namespace

TEST(FocusSearch, FindsTheSharpestPositionWithFewMoves)
{
    for (const auto& [best, step, interval] :
         {std::tuple(0, 1, 60), {370, 1, 10}, {555, 50, 60}, {1000, 1, 300}}) {
        Lens lens;
        lens.best = best;
        lens.step = step;
        mirvak::FocusSearch search(lens);
        ASSERT_EQ(search.begin(0.5, 0.5), MIRVAK_OK);
        lens.follow(search, interval);
        EXPECT_EQ(search.state(), MIRVAK_OK);
        EXPECT_NEAR(lens.position, best, std::max(6, step));
        EXPECT_LE(lens.moves, 21);
    }
}

TEST(FocusSearch, LooksWhereItIsToldToTheBordersAndNoFurther)
{
    for (const auto& [x, y] : {std::pair(1.0, 1.0), {1.0, 0.0}, {0.0, 1.0}, {0.0, 0.0}}) {
        Lens lens;
        lens.best = 370;
        lens.seen = {120, 60, 40, 30};
        mirvak::FocusSearch search(lens);
        ASSERT_EQ(search.begin(x, y), MIRVAK_OK);
        lens.follow(search, 60);
        EXPECT_EQ(search.state(), x + y == 2 ? MIRVAK_OK : MIRVAK_NOT_FOUND) << x << ' ' << y;
    }
    Lens lens;
    mirvak::FocusSearch search(lens);
    for (const double outside : {-0.01, 1.01, std::nan("")}) {
        EXPECT_EQ(search.begin(outside, 0.5), MIRVAK_BAD_ARGUMENT) << outside;
        EXPECT_EQ(search.begin(0.5, outside), MIRVAK_BAD_ARGUMENT) << outside;
    }
    EXPECT_EQ(lens.moves, 0);
    lens.isReadable = false; // a camera that only focuses by itself
    EXPECT_EQ(search.begin(0.5, 0.5), MIRVAK_OK);
    EXPECT_EQ(lens.automatic, 1) << "told to begin anew";
    EXPECT_EQ(lens.moves, 0);
    EXPECT_EQ(search.state(), MIRVAK_OK) << "no search that somebody waits for";
}

TEST(FocusSearch, OneThatReplacesAnotherPutsBackWhatWasBeforeBoth)
{
    Lens lens;
    lens.best = -100000; // as flat as paper
    lens.position = 730;
    mirvak::FocusSearch search(lens);
    ASSERT_EQ(search.begin(0.2, 0.5), MIRVAK_OK);
    ASSERT_EQ(search.begin(0.5, 0.5), MIRVAK_OK);
    lens.follow(search, 60);
    EXPECT_EQ(search.state(), MIRVAK_NOT_FOUND);
    EXPECT_EQ(lens.position, 730);
}

TEST(FocusSearch, ALensThatSticksIsLeftToItsAutomaticAgain)
{
    for (const int stuckAfter : {1, 5, 15}) {
        Lens lens;
        lens.best = 370;
        lens.position = 730;
        lens.automatic = 1;
        lens.stuckAfter = stuckAfter;
        mirvak::FocusSearch search(lens);
        const MirvakResult begun = search.begin(0.5, 0.5);
        EXPECT_EQ(begun, stuckAfter == 1 ? MIRVAK_NOT_FOUND : MIRVAK_OK);
        lens.follow(search, 60);
        EXPECT_EQ(search.state(), MIRVAK_NOT_FOUND);
        EXPECT_EQ(lens.position, 730);
        EXPECT_EQ(lens.automatic, 1);
    }
}

#include "DeskConfig.h"
#include "TempDir.h"

#include <gmock/gmock.h>

#include <cstdlib>

using ::testing::HasSubstr;

namespace {

std::string errorOf(const TempDir& folder, const std::string& text)
{
    std::string error;
    EXPECT_FALSE(DeskConfig::load(folder.write("desk.cfg", text), error)) << text;
    return error;
}

} // namespace

TEST(DeskConfig, ReadsEverySetting)
{
    const TempDir folder;
    std::string error;
    const auto desk = DeskConfig::load(folder.write("desk.cfg", R"(
cameras = (
  { name = "Desk camera"; type = 1; usb = "1b172000"; source = "photos"; fps = 12.5;
    resolutions = [ "1600x1200", "native" ]; hold = 6; loop = false;
    unplug_after = 3; stall_after = 2.5; corrupt_every = 40; fail_create = true; fail_start = true;
    refused = true; held = true; controls = [ "gain", "focus" ]; } );
real = false;
keys = { camera = 0; fifo = "../pipe"; };
idcard = { cards = "/srv/cards"; };
fingerprint = { prints = "prints"; delay = 0.25; };
)"),
                                       error);
    ASSERT_TRUE(desk) << error;
    ASSERT_EQ(desk->cameras.size(), 1U);
    const DeskConfig::Camera& camera = desk->cameras[0];
    EXPECT_EQ(camera.name, "Desk camera");
    EXPECT_EQ(camera.type, 1);
    EXPECT_EQ(camera.usbId, "1b172000");
    EXPECT_EQ(camera.source, folder.file("photos"));
    EXPECT_EQ(camera.framesPerSecond, 12.5);
    ASSERT_EQ(camera.resolutions.size(), 2U);
    EXPECT_EQ(camera.resolutions[0].width, 1600);
    EXPECT_EQ(camera.resolutions[0].height, 1200);
    EXPECT_TRUE(camera.resolutions[1].isNative());
    EXPECT_EQ(camera.holdSeconds, 6);
    EXPECT_FALSE(camera.loop);
    EXPECT_EQ(camera.unplugAfter, 3.0);
    EXPECT_EQ(camera.stallAfter, 2.5);
    EXPECT_EQ(camera.corruptEvery, 40);
    EXPECT_TRUE(camera.failCreate);
    EXPECT_TRUE(camera.failStart);
    EXPECT_TRUE(camera.refused);
    EXPECT_TRUE(camera.held);
    EXPECT_EQ(camera.controls, (std::vector<int>{1, 4}));
    EXPECT_FALSE(desk->realDevices);
    const auto parent = std::filesystem::path(folder.path()).parent_path();
    EXPECT_EQ(desk->keys->fifo, parent / "pipe");
    EXPECT_EQ(desk->idCard->cards, "/srv/cards");
    EXPECT_EQ(desk->fingerprint->prints, folder.file("prints"));
    EXPECT_EQ(desk->fingerprint->delaySeconds, 0.25);
}

TEST(DeskConfig, DefaultsMakeACameraThatSimplyRuns)
{
    const TempDir folder;
    std::string error;
    const auto desk = DeskConfig::load(
        folder.write("desk.cfg", R"(cameras = ({ name = "C"; source = "p.jpg"; });)"), error);
    ASSERT_TRUE(desk) << error;
    const DeskConfig::Camera& camera = desk->cameras.at(0);
    EXPECT_EQ(camera.type, 0);
    EXPECT_EQ(camera.framesPerSecond, 30);
    EXPECT_EQ(camera.holdSeconds, 4);
    EXPECT_TRUE(camera.loop);
    ASSERT_EQ(camera.resolutions.size(), 1U);
    EXPECT_TRUE(camera.resolutions[0].isNative());
    EXPECT_FALSE(camera.unplugAfter || camera.stallAfter || camera.corruptEvery);
    EXPECT_FALSE(camera.failCreate || camera.failStart);
    EXPECT_TRUE(desk->realDevices);
    EXPECT_FALSE(desk->keys || desk->idCard || desk->fingerprint);
}

TEST(DeskConfig, RefusesWhatCannotBeMeantAndNamesTheLine)
{
    const TempDir folder;
    const auto camera = [](const std::string& settings) {
        return "cameras = (\n{ name = \"C\"; source = \"p\";\n" + settings + " });";
    };
    EXPECT_THAT(errorOf(folder, "cameras = (\n{ name = ;"), HasSubstr("desk.cfg:2: syntax error"));
    EXPECT_THAT(errorOf(folder, camera("hlod = 3;")), HasSubstr("desk.cfg:3: \"hlod\" is not known"));
    EXPECT_THAT(errorOf(folder, "cameras = ( { source = \"p\"; } );"), HasSubstr("\"name\" is missing"));
    for (const char* wrong : {"type = 4;",
                              "type = \"1\";",
                              "usb = \"1B172000\";",
                              "usb = \"1b17\";",
                              "source = \"\";",
                              "fps = 0;",
                              "hold = -1;",
                              "hold = \"long\";",
                              "loop = 1;",
                              "corrupt_every = -1;",
                              "resolutions = [];",
                              "resolutions = [ \"1600\" ];",
                              "resolutions = [ \"0x10\" ];",
                              "resolutions = [ \"1600x1200p\" ];",
                              "resolutions = [ \"99999x10\" ];"})
        EXPECT_THAT(errorOf(folder, camera(wrong)), HasSubstr("desk.cfg:3: ")) << wrong;
    EXPECT_THAT(errorOf(folder, "keys = { camera = 1; fifo = \"k\"; };"), HasSubstr("desk.cfg:1: "));
    EXPECT_THAT(errorOf(folder, "idcard = \"cards\";"), HasSubstr("desk.cfg:1: "));

    std::string error;
    EXPECT_FALSE(DeskConfig::load(folder.file("missing.cfg"), error));
    EXPECT_THAT(error, HasSubstr("missing.cfg"));
}

TEST(DeskConfig, EnvironmentChoosesTheFileAndABrokenOneCostsOneLine)
{
    const TempDir folder;
    EXPECT_FALSE(DeskConfig::fromEnvironment());
    setenv("LUMRO_DESK", folder.write("desk.cfg", "real = false;").c_str(), 1);
    EXPECT_TRUE(DeskConfig::fromEnvironment());
    folder.write("desk.cfg", "real = maybe;");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(DeskConfig::fromEnvironment());
    const std::string line = testing::internal::GetCapturedStderr();
    unsetenv("LUMRO_DESK");
    EXPECT_THAT(line, HasSubstr("desk.cfg:1"));
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
}

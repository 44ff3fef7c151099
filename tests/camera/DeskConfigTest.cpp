#include "DeskConfig.h"
#include "TempDir.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <sstream>

using ::testing::HasSubstr;

namespace {

std::string errorOf(const TempDir& folder, const std::string& text)
{
    std::string error;
    EXPECT_FALSE(DeskConfig::load(folder.write("desk.cfg", text), error)) << text;
    return error;
}

} // namespace

TEST(DeskConfig, ReadsEverySettingAndHasDefaults)
{
    const TempDir folder;
    const auto told = [&](const std::string& text) {
        std::string error;
        const auto desk = DeskConfig::load(folder.write("desk.cfg", text), error);
        std::ostringstream out;
        out << error;
        for (const DeskConfig::Camera& c : desk ? desk->cameras : std::vector<DeskConfig::Camera>()) {
            out << c.name << ' ' << c.type << ' ' << c.usbId << ' '
                << c.source.lexically_relative(folder.path()).string() << ' ' << c.framesPerSecond << ' '
                << c.holdSeconds << ' ' << c.loop << ' ' << c.unplugAfter.value_or(-1) << ' '
                << c.stallAfter.value_or(-1) << ' ' << c.corruptEvery << ' ' << c.failCreate << c.failStart
                << c.refused << c.held << ' ' << ::testing::PrintToString(c.controls);
            for (const DeskConfig::Size& size : c.resolutions)
                out << ' ' << size.width << 'x' << size.height;
        }
        if (desk)
            out << " real " << desk->realDevices << (desk->keys ? desk->keys->fifo.filename() : "")
                << (desk->idCard ? desk->idCard->cards : "") << (desk->printer ? desk->printer->paper : "");
        if (desk && desk->fingerprint)
            out << desk->fingerprint->prints.filename() << desk->fingerprint->delaySeconds;
        return out.str();
    };
    EXPECT_EQ(told(R"(
cameras = (
  { name = "Desk camera"; type = 1; usb = "1b172000"; source = "photos"; fps = 12.5;
    resolutions = [ "1600x1200", "native" ]; hold = 6; loop = false;
    unplug_after = 3; stall_after = 2.5; corrupt_every = 40; fail_create = true; refused = true;
    controls = [ "gain", "focus" ]; } );
real = false;
keys = { camera = 0; fifo = "../pipe"; };
idcard = { cards = "/srv/cards"; };
fingerprint = { prints = "prints"; delay = 0.25; };
printer = { paper = "/srv/paper"; };
)"),
              "Desk camera 1 1b172000 photos 12.5 6 0 3 2.5 40 1010 { 1, 4 } 1600x1200 0x0 real "
              "0\"pipe\"\"/srv/cards\"\"/srv/paper\"\"prints\"0.25");
    EXPECT_EQ(told(R"(cameras = ({ name = "C"; source = "p"; fail_start = true; held = true; });)"),
              "C 0  p 30 4 1 -1 -1 0 0101 {} 0x0 real 1\"\"\"\"\"\"");
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
                              "resolutions = [ \"99999x10\" ];",
                              "resolutions = [ \"10x99999\" ];"})
        EXPECT_THAT(errorOf(folder, camera(wrong)), HasSubstr("desk.cfg:3: ")) << wrong;
    EXPECT_THAT(errorOf(folder, "keys = { camera = 1; fifo = \"k\"; };"), HasSubstr("desk.cfg:1: "));
    EXPECT_THAT(errorOf(folder, camera("hold = 1;") + "keys = { camera = 1; fifo = \"k\"; };"),
                HasSubstr("from 0 to 0")); // there is no second one
    EXPECT_THAT(errorOf(folder, "printer = { paper = \"\"; };"), HasSubstr("desk.cfg:1: "));
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

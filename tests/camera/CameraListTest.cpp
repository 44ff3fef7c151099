// What is decided about cameras before one is opened: type, name, USB identity, order of the modes.
#include "CameraIdentities.h"
#include "CameraModes.h"
#include "CameraName.h"
#include "CameraTypes.h"
#include "TempDir.h"
#include "UsbIdentity.h"
#include "UserConfig.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace mirvak;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

CameraInfo camera(const std::string& usbId, long long pixels, bool greyOnly = false, int type = 0)
{
    CameraInfo info;
    info.usbId = usbId;
    info.largestPixels = pixels;
    info.greyOnly = greyOnly;
    info.type = type;
    return info;
}

std::vector<int> types(std::vector<CameraInfo> cameras, const TypeOverrides& overrides = {})
{
    assignTypes(cameras, overrides);
    std::vector<int> result;
    for (const CameraInfo& info : cameras)
        result.push_back(info.type);
    return result;
}

constexpr auto listed = "1b172000"; // a model that flattens book pages
constexpr auto other = "0bda5520";

} // namespace

TEST(CameraTypes, LargestColourCameraIsMainOnlyWhereNoModelIsListed)
{
    EXPECT_THAT(types({camera(other, 100), camera("046d0825", 900), camera("046d0826", 900)}),
                ElementsAre(2, 1, 2));
    EXPECT_THAT(types({camera(other, 900), camera(listed, 100)}), ElementsAre(2, 1));
    EXPECT_THAT(types({camera(listed, 1), camera(listed, 2)}), ElementsAre(1, 1));
    EXPECT_THAT(types({camera("1B172000", 1), camera(other, 2)}), ElementsAre(2, 1))
        << "identities are compared with regard to case";
}

TEST(CameraTypes, GreyCamerasAreInfraredHoweverLarge)
{
    EXPECT_THAT(types({camera(other, 900, true), camera(other, 100)}), ElementsAre(3, 1));
    EXPECT_THAT(types({camera(listed, 900, true)}), ElementsAre(3));
    EXPECT_THAT(types({}), IsEmpty());
}

TEST(CameraTypes, WhatIsGivenWins)
{
    EXPECT_THAT(types({camera(listed, 900, false, 2), camera(other, 100)}), ElementsAre(2, 1));
    EXPECT_THAT(types({camera(listed, 900), camera(other, 100)}, {{listed, 2}, {other, 1}}),
                ElementsAre(2, 1));
    EXPECT_THAT(types({camera(other, 900), camera("046d0825", 100)}, {{"046d0825", 1}}), ElementsAre(2, 1));
    EXPECT_THAT(types({camera(other, 900, true)}, {{other, 1}}), ElementsAre(1)) << "a grey one too";
}

TEST(CameraTypes, OverridesComeFromTheConfigurationFile)
{
    const TempDir folder;
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    const auto path = userConfigFile("cameras.cfg");
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(path, folder.file("lumro/cameras.cfg"));
    EXPECT_THAT(readTypeOverrides(path), IsEmpty());

    const auto readText = [&](const std::string& text) {
        return readTypeOverrides(folder.write("cameras.cfg", text));
    };
    EXPECT_EQ(readText(R"(cameras = ( { usb = "abcd1234"; type = 2; }, { usb = "00010002"; type = 3; } );)"),
              (TypeOverrides{{"abcd1234", 2}, {"00010002", 3}}));
    for (const char* broken :
         {"cameras = (",
          "cameras = ( { usb = \"abcd1234\"; } );",
          "cameras = ( { usb = \"00010002\"; type = 3; }, { usb = \"abcd1234\"; type = 4; } );",
          "cameras = ( { usb = 5; type = 1; } );",
          "others = 1;"}) {
        testing::internal::CaptureStderr();
        EXPECT_THAT(readText(broken), IsEmpty()) << broken;
        const std::string line = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
    }
}

TEST(CameraName, DropsAFunctionThatRepeatsTheProduct)
{
    EXPECT_EQ(cameraName("Integrated Camera: Integrated C"), "Integrated Camera");
    EXPECT_EQ(cameraName("Desk Scanner: IR Camera"), "Desk Scanner: IR Camera");
    EXPECT_EQ(cameraName("Plain"), "Plain");
    EXPECT_EQ(cameraName(": odd"), ": odd");
}

TEST(UsbIdentity, IsFoundOnTheWayUp)
{
    const TempDir sys;
    std::filesystem::create_directories(sys.file("usb1/1-4/1-4:1.0/video4linux/video0"));
    std::filesystem::create_directories(sys.file("class"));
    sys.write("usb1/1-4/idVendor", "1b17\n");
    sys.write("usb1/1-4/idProduct", "2000\n");
    std::filesystem::create_symlink(sys.file("usb1/1-4/1-4:1.0"), sys.file("class/device"));
    const UsbIdentity identity = usbIdentityOf(sys.file("class/device"));
    EXPECT_EQ(identity.id, "1b172000");
    EXPECT_EQ(identity.devicePath, std::filesystem::canonical(sys.file("usb1/1-4")));
    EXPECT_EQ(usbIdentityOf(sys.file("usb1")).id, "");
    EXPECT_EQ(usbIdentityOf(sys.file("nowhere")).id, "");
}

TEST(CameraIdentities, ASerialNumberIsFoundAgainAtAnyPortUntilATwinComes)
{
    using Facts = CameraIdentities::Facts;
    const Facts here{"1b172000", "A1", "1-1", "1.0"}, head{"1b172000", "A1", "1-1", "1.2"};
    const Facts there{"1b172000", "A1", "1-2", "1.0"}, moved{"1b172000", "A1", "1-3", "1.0"};
    CameraIdentities names;
    const std::string first = names.name({here, head})[0];
    EXPECT_NE(names.name({here, head})[1], first) << "another camera of the same device";
    EXPECT_EQ(names.name({moved})[0], first);
    const auto twins = names.name({moved, there});
    EXPECT_EQ(twins[0], first) << "one that is there keeps its name";
    EXPECT_NE(twins[1], first);
    names.name({});
    EXPECT_EQ(names.name({there})[0], twins[1]) << "from now on the port tells";
    EXPECT_EQ(names.name({there, moved})[1], first);

    const Facts left{"0bda5801", "", "1-1", "1.0"}, right{"0bda5801", "", "1-2", "1.0"};
    const auto unnumbered = names.name({left, right});
    EXPECT_NE(unnumbered[0], unnumbered[1]);
    EXPECT_EQ(names.name({right})[0], unnumbered[1]);
    const Facts alone{"0bda5802", "", "1-1", "1.0"}, elsewhere{"0bda5802", "", "1-2", "1.0"};
    const std::string own = names.name({alone})[0];
    EXPECT_NE(names.name({elsewhere})[0], own) << "it may be another one";
    EXPECT_EQ(names.name({alone})[0], own);
}

TEST(CameraModes, SplitsByKindKeepsTheOrderAndDropsDoubles)
{
    const CameraModes modes({{PixelFormat::Grey, 640, 480},
                             {PixelFormat::Yuyv, 640, 480},
                             {PixelFormat::Mjpeg, 3264, 2448},
                             {PixelFormat::Mjpeg, 640, 480},
                             {PixelFormat::Mjpeg, 3264, 2448},
                             {PixelFormat::Nv12, 640, 480},
                             {PixelFormat::Yuyv, 1600, 1200}});
    EXPECT_THAT(
        modes.of(1),
        ElementsAre(CameraMode{PixelFormat::Yuyv, 640, 480}, CameraMode{PixelFormat::Yuyv, 1600, 1200}))
        << "colour takes the place of grey, later doubles are dropped";
    EXPECT_THAT(
        modes.of(2),
        ElementsAre(CameraMode{PixelFormat::Mjpeg, 3264, 2448}, CameraMode{PixelFormat::Mjpeg, 640, 480}));
    EXPECT_EQ(modes.betterFormat(), 2);
    EXPECT_THAT(modes.of(0), IsEmpty());
    EXPECT_EQ(modes.find(1, 2), nullptr);
    EXPECT_EQ(modes.find(1, -1), nullptr);
    EXPECT_EQ(modes.find(2, 1)->height, 480);
}

TEST(CameraModes, ACameraOfOneKindOffersItUnderBothNumbers)
{
    const CameraModes raw({{PixelFormat::Grey, 640, 480}});
    EXPECT_EQ(raw.of(2).size(), 1U);
    EXPECT_EQ(raw.betterFormat(), 1);
    const CameraModes compressed({{PixelFormat::Mjpeg, 640, 480}});
    EXPECT_EQ(compressed.of(1).size(), 1U);
    EXPECT_EQ(compressed.betterFormat(), 2);
    const CameraModes largerRaw({{PixelFormat::Mjpeg, 640, 480}, {PixelFormat::Yuyv, 1600, 1200}});
    EXPECT_EQ(largerRaw.betterFormat(), 1);
    const CameraModes equal({{PixelFormat::Yuyv, 1600, 1200}, {PixelFormat::Mjpeg, 1600, 1200}});
    EXPECT_EQ(equal.betterFormat(), 2) << "uncompressed it fills the bus and comes slowly";
}

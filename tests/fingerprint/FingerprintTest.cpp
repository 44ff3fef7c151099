// The fingerprint library as a program meets it: the virtual desk's prints, and the driver library's own
// virtual sensor, which takes a picture of any size from a socket.
#include "zaz.h"

#include "Codec.h"
#include "TempDir.h"
#include "UsbSensor.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr unsigned address = 0xFFFFFFFF;
constexpr unsigned char password[4] = {};

class FingerprintTest : public ::testing::Test
{
protected:
    FingerprintTest() { std::filesystem::create_directory(folder.file("prints")); }
    ~FingerprintTest() override
    {
        for (const char* name : {"LUMRO_DESK", "FP_VIRTUAL_IMAGE"})
            unsetenv(name);
    }

    void useDesk(const std::string& text) const
    {
        setenv("LUMRO_DESK", folder.write("desk.cfg", text).c_str(), 1);
    }
    void usePrints() const { useDesk("real = false; fingerprint = { prints = \"prints\"; delay = 0.0; };"); }
    void layPrint(const std::string& name, const cv::Mat& grey) const
    {
        mirvak::Image image;
        cv::cvtColor(grey, image.pixels, cv::COLOR_GRAY2RGB);
        ASSERT_EQ(mirvak::writeImage(folder.file("prints/" + name), image, 95), mirvak::WriteResult::ok);
    }
    static int open(int mode = 1)
    {
        int handle = 0;
        EXPECT_EQ(ZAZ_SETPATH(mode, 1), ZAZ_OK);
        EXPECT_EQ(ZAZOpenDeviceEx(&handle, 2, nullptr, 2, 2), ZAZ_OK);
        return handle;
    }
    static int answerOf(int handle)
    {
        int result = ZAZ_NO_FINGER;
        for (int poll = 0; poll < 1000 && result == ZAZ_NO_FINGER; ++poll)
            result = ZAZGetImage(handle, address);
        return result;
    }
    /// Of the picture that the handle has; empty without one.
    static cv::Mat pixelsOf(int handle)
    {
        cv::Mat pixels(360, 256, CV_8UC1, cv::Scalar(77));
        int length = -1;
        const bool hasPicture = ZAZUpImage(handle, address, pixels.data, &length) == ZAZ_OK;
        EXPECT_TRUE(length == (hasPicture ? 92160 : 0) || (length == -1 && !hasPicture)) << length;
        if (!hasPicture)
            return {};
        return pixels;
    }

    const TempDir folder;
};

TEST_F(FingerprintTest, ThePrintsOfTheDeskComeInTurnFittedOnWhite)
{
    usePrints();
    layPrint("1.png", cv::Mat(90, 128, CV_8UC1, cv::Scalar(60)));   // twice as large: 256 x 180
    layPrint("2.bmp", cv::Mat(720, 100, CV_8UC1, cv::Scalar(120))); // half: 50 x 360
    for (const auto& [place, grey] : {std::pair(cv::Rect(0, 90, 256, 180), 60), {{103, 0, 50, 360}, 120}}) {
        const int handle = open();
        ASSERT_EQ(ZAZVfyPwd(handle, address, password), ZAZ_OK);
        EXPECT_TRUE(pixelsOf(handle).empty()) << "before a finger was seen";
        ASSERT_EQ(answerOf(handle), ZAZ_OK);
        ASSERT_EQ(answerOf(handle), ZAZ_OK) << "it has a picture, and keeps it";
        cv::Mat expected(360, 256, CV_8UC1, cv::Scalar(255));
        expected(place).setTo(grey);
        EXPECT_EQ(cv::norm(pixelsOf(handle), expected, cv::NORM_INF), 0);
        EXPECT_EQ(ZAZCloseDeviceEx(handle), ZAZ_OK);
        EXPECT_TRUE(pixelsOf(handle).empty()) << "nothing is kept";
        EXPECT_EQ(ZAZGetImage(handle, address), ZAZ_BAD_ARGUMENT);
    }
}

TEST_F(FingerprintTest, AFingerOfTheDeskComesAfterItsSeconds)
{
    useDesk("real = false; fingerprint = { prints = \"prints\"; delay = 0.5; };");
    layPrint("1.png", cv::Mat(90, 128, CV_8UC1, cv::Scalar(60)));
    const int handle = open();
    EXPECT_EQ(answerOf(handle), ZAZ_OK);
    EXPECT_EQ(ZAZCloseDeviceEx(handle), ZAZ_OK);
}

TEST_F(FingerprintTest, AFileHasEveryPixelAndIsForItsOwnerAlone)
{
    cv::Mat pixels(360, 256, CV_8UC1);
    for (int i = 0; i < pixels.rows * pixels.cols; ++i)
        pixels.data[i] = static_cast<unsigned char>(i / 256 + i % 256 * 3);
    const std::string path = folder.write("finger.bmp", "an earlier one");
    ASSERT_EQ(ZAZImgData2BMP(pixels.data, path.c_str()), ZAZ_OK);
    const auto image = mirvak::readImage(path);
    ASSERT_TRUE(image);
    cv::Mat grey;
    cv::cvtColor(image->pixels, grey, cv::COLOR_RGB2GRAY);
    EXPECT_EQ(cv::norm(grey, pixels, cv::NORM_INF), 0);
    EXPECT_EQ(TempDir::contentOf(path).substr(28, 2), std::string("\x08\0", 2)) << "bits a pixel";
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));

    EXPECT_EQ(ZAZImgData2BMP(pixels.data, folder.file("none/finger.bmp").c_str()), ZAZ_IO_ERROR);
    std::filesystem::create_directory(folder.file("taken"));
    EXPECT_EQ(ZAZImgData2BMP(pixels.data, folder.file("taken").c_str()), ZAZ_IO_ERROR);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"finger.bmp", "prints", "taken"}));
}

TEST_F(FingerprintTest, EveryTroubleHasItsAnswer)
{
    int handle = 0;
    EXPECT_EQ(ZAZOpenDeviceEx(nullptr, 2, nullptr, 2, 2), ZAZ_BAD_ARGUMENT);
    EXPECT_EQ(ZAZOpenDeviceEx(&handle, 1, nullptr, 2, 2), ZAZ_BAD_ARGUMENT);
    EXPECT_EQ(ZAZVfyPwd(12345, address, password), ZAZ_BAD_ARGUMENT);
    for (const auto& [mode, way] : {std::pair(0, 1), {4, 1}, {1, 2}})
        EXPECT_EQ(ZAZ_SETPATH(mode, way), ZAZ_BAD_ARGUMENT) << mode;

    useDesk("real = false;");
    handle = open();
    EXPECT_EQ(ZAZVfyPwd(handle, address, password), ZAZ_NO_SENSOR);
    EXPECT_EQ(ZAZGetImage(handle, address), ZAZ_NO_SENSOR);
    ZAZCloseDeviceEx(handle);

    usePrints(); // of which there are none: no finger comes
    handle = open();
    EXPECT_EQ(ZAZVfyPwd(handle, address, reinterpret_cast<const unsigned char*>("abcd")), ZAZ_BAD_ARGUMENT);
    EXPECT_EQ(ZAZVfyPwd(handle, address, password), ZAZ_OK);
    EXPECT_EQ(ZAZGetImage(handle, address), ZAZ_NO_FINGER);
    const int later = open();
    EXPECT_EQ(ZAZGetImage(handle, address), ZAZ_TAKEN_OVER);
    EXPECT_EQ(ZAZCloseDeviceEx(handle), ZAZ_OK);
    EXPECT_EQ(ZAZGetImage(later, address), ZAZ_NO_FINGER) << "the later one goes on";
    folder.write("prints/broken.png", "no picture");
    EXPECT_EQ(answerOf(later), ZAZ_LOST);
    const int last = open();
    std::filesystem::remove_all(folder.file("prints")); // pulled out
    EXPECT_EQ(ZAZGetImage(last, address), ZAZ_LOST);
    EXPECT_EQ(ZAZGetImage(last, address), ZAZ_LOST);
    EXPECT_EQ(ZAZVfyPwd(last, address, password), ZAZ_NO_SENSOR);
    for (const int opened : {later, last})
        EXPECT_EQ(ZAZCloseDeviceEx(opened), ZAZ_OK);
    EXPECT_EQ(ZAZCloseDeviceEx(last), ZAZ_BAD_ARGUMENT);
}

/// The finger on the driver library's virtual sensor.
class Finger
{
public:
    Finger(const std::string& socketPath, const cv::Mat& grey) : fd_(socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un name = {};
        name.sun_family = AF_UNIX;
        socketPath.copy(name.sun_path, sizeof name.sun_path - 1);
        const int size[2] = {grey.cols, grey.rows};
        isThere_ = connect(fd_, reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0 &&
                   write(fd_, size, sizeof size) == ssize_t(sizeof size) &&
                   write(fd_, grey.data, grey.total()) == static_cast<ssize_t>(grey.total());
    }
    ~Finger() { close(fd_); }
    bool isThere() const { return isThere_; }

private:
    int fd_;
    bool isThere_ = false;
};

TEST_F(FingerprintTest, ARealDriverDeliversItsPicture)
{
    const std::string sensor = folder.file("sensor");
    setenv("FP_VIRTUAL_IMAGE", sensor.c_str(), 1);
    usePrints();
    useDesk("fingerprint = { prints = \"prints\"; delay = 0.0; };"); // which real sensors go before
    cv::Mat ridges(400, 300, CV_8UC1);
    for (int y = 0; y < ridges.rows; ++y)
        for (int x = 0; x < ridges.cols; ++x)
            ridges.at<unsigned char>(y, x) = (x / 6 + y / 40) % 2 ? 220 : 30;
    for (int round = 0; round < 2; ++round) { // the first is given up while it waits
        const int handle = open(2);
        ASSERT_EQ(ZAZVfyPwd(handle, address, password), ZAZ_OK);
        ASSERT_EQ(ZAZGetImage(handle, address), ZAZ_NO_FINGER);
        if (round == 1) {
            const Finger finger(sensor, ridges);
            ASSERT_TRUE(finger.isThere());
            ASSERT_EQ(answerOf(handle), ZAZ_OK);
            cv::Mat expected(360, 256, CV_8UC1, cv::Scalar(255)), inside = expected(cv::Rect(0, 9, 256, 341));
            cv::resize(ridges, inside, inside.size(), 0, 0, cv::INTER_AREA);
            EXPECT_EQ(cv::norm(pixelsOf(handle), expected, cv::NORM_INF), 0);
        }
        EXPECT_EQ(ZAZCloseDeviceEx(handle), ZAZ_OK);
    }
    unsetenv("FP_VIRTUAL_IMAGE");
    const int handle = open();
    EXPECT_EQ(ZAZVfyPwd(handle, address, password), ZAZ_OK) << "the desk's, where there is no real one";
    EXPECT_EQ(ZAZGetImage(handle, address), ZAZ_NO_FINGER);
    EXPECT_EQ(ZAZCloseDeviceEx(handle), ZAZ_OK);
}

TEST_F(FingerprintTest, ADriverThatAnswersNonsenseIsASensorThatIsLost)
{
    using State = mirvak::FingerSensor::State;
    for (const char* answer : {"\\2no picture", "\\3", "\\77", ""}) {
        const std::string driver = folder.write("driver",
                                                std::string("#!/bin/sh\nprintf '\\1' >&3\nread go < '") +
                                                    folder.file("go") + "'\nprintf '" + answer + "' >&3\n");
        std::filesystem::permissions(driver, std::filesystem::perms::owner_all);
        ASSERT_EQ(mkfifo(folder.file("go").c_str(), 0600), 0);
        mirvak::UsbSensor sensor(driver, 1);
        ASSERT_EQ(sensor.waitWhile(State::opening, std::chrono::seconds(30)), State::noFinger);
        folder.write("go", "go\n");
        EXPECT_EQ(sensor.waitWhile(State::noFinger, std::chrono::seconds(30)), State::lost) << answer;
        std::filesystem::remove(folder.file("go"));
    }
}

TEST_F(FingerprintTest, ADriverThatHangsEndsWithItsSensor)
{
    const std::string driver = folder.write(
        "driver", "#!/bin/sh\necho $$ >'" + folder.file("pid") + "'\nprintf '\\1' >&3\nexec sleep 100000\n");
    std::filesystem::permissions(driver, std::filesystem::perms::owner_all);
    {
        mirvak::UsbSensor sensor(driver, 1);
        ASSERT_EQ(sensor.waitWhile(mirvak::FingerSensor::State::opening, std::chrono::seconds(30)),
                  mirvak::FingerSensor::State::noFinger);
    }
    EXPECT_NE(kill(std::stoi(folder.content("pid")), 0), 0) << "it runs on";
}

} // namespace

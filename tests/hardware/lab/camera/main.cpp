// A USB camera in software, for tests of the real camera driver.
//   lab_camera VENDOR PRODUCT NAME PORT JPEGFOLDER WIDTHxHEIGHT...
// VENDOR and PRODUCT are hexadecimal. It is plugged in until standard input ends; there a line "button"
// presses the snapshot button. What the host does to it is told on standard output.
#include "UsbCamera.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <thread>

namespace {

lab::CameraModel modelFromArguments(char** arguments, int count)
{
    lab::CameraModel model{std::uint16_t(std::strtoul(arguments[1], nullptr, 16)),
                           std::uint16_t(std::strtoul(arguments[2], nullptr, 16)),
                           arguments[3],
                           std::string("C000") + arguments[4],
                           {}};
    for (int i = 6; i < count; ++i) {
        lab::FrameSize size{};
        if (std::sscanf(arguments[i], "%dx%d", &size.width, &size.height) == 2)
            model.sizes.push_back(size);
    }
    return model;
}

// Ends the process, and thereby the connection, at the end of the input: the cable is pulled.
void obeyCommands(lab::UsbCamera& camera)
{
    std::string line;
    while (std::getline(std::cin, line)) {
        if (line == "button" && !camera.pressButton())
            std::puts("button not heard");
    }
    _exit(0);
}

} // namespace

int main(int count, char** arguments)
{
    if (count < 7) {
        std::fputs("usage: lab_camera VENDOR PRODUCT NAME PORT JPEGFOLDER WIDTHxHEIGHT...\n", stderr);
        return 2;
    }
    setvbuf(stdout, nullptr, _IOLBF, 0);
    try {
        const lab::Pictures pictures(arguments[5]);
        lab::UsbCamera camera(modelFromArguments(arguments, count), pictures, std::atoi(arguments[4]));
        std::thread([&] { obeyCommands(camera); }).detach();
        std::puts("plugged");
        camera.run();
        _exit(0); // the thread above may still wait for a command
    } catch (const std::exception& error) {
        std::fprintf(stderr, "lab_camera: %s\n", error.what());
        return 1;
    }
}

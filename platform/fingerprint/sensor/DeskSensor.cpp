#include "DeskSensor.h"

#include "Codec.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <system_error>
#include <thread>

namespace mirvak {

namespace {

namespace fs = std::filesystem;

std::atomic<size_t> nextPrint{0};

std::vector<fs::path> printsIn(const fs::path& folder)
{
    std::vector<fs::path> prints;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string extension = extensionOf(entry.path().string());
        if (extension == "png" || extension == "jpg" || extension == "bmp")
            prints.push_back(entry.path());
    }
    std::sort(prints.begin(), prints.end());
    return prints;
}

} // namespace

DeskSensor::DeskSensor(const DeskConfig::Fingerprint& desk)
    : folder_(desk.prints),
      fingerComes_(Clock::now() + std::chrono::milliseconds(static_cast<long>(desk.delaySeconds * 1000)))
{
}

FingerSensor::State DeskSensor::waitWhile(State state, std::chrono::milliseconds limit)
{
    const Clock::time_point end = Clock::now() + limit;
    if (state_ == State::noFinger)
        state_ = look();
    if (state_ == state && state_ == State::noFinger) {
        std::this_thread::sleep_until(end);
        state_ = look();
    }
    return state_;
}

FingerSensor::State DeskSensor::look()
{
    std::error_code error;
    if (!fs::is_directory(folder_, error))
        return State::lost;
    if (Clock::now() < fingerComes_)
        return State::noFinger;
    const std::vector<fs::path> prints = printsIn(folder_);
    return prints.empty() ? State::noFinger : read(prints[nextPrint++ % prints.size()]);
}

FingerSensor::State DeskSensor::read(const fs::path& print)
{
    const std::optional<Image> image = readImage(print.string());
    if (!image) {
        std::fprintf(stderr, "fingerprint: %s cannot be read\n", print.c_str());
        return State::lost;
    }
    cv::Mat grey;
    cv::cvtColor(image->pixels, grey, cv::COLOR_RGB2GRAY);
    pixels_ = fitFinger(grey);
    return State::finger;
}

} // namespace mirvak

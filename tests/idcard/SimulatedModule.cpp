#include "SimulatedModule.h"

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

using namespace idcard;

SimulatedModule::SimulatedModule(Bytes text, Fault fault)
    : text_(std::move(text)), fault_(std::move(fault)), master_(posix_openpt(O_RDWR | O_NOCTTY))
{
    grantpt(master_.get());
    unlockpt(master_.get());
    port_ = ptsname(master_.get());
    slave_ = mirvak::UniqueFd(open(port_.c_str(), O_RDWR | O_NOCTTY));
    termios line{};
    tcgetattr(slave_.get(), &line);
    cfmakeraw(&line);
    tcsetattr(slave_.get(), TCSANOW, &line);
    thread_ = std::thread([this] { serve(); });
}

SimulatedModule::~SimulatedModule()
{
    isStopped_ = true;
    thread_.join();
}

Bytes SimulatedModule::frame(int status, const Bytes& data)
{
    const size_t length = data.size() + 4;
    Bytes frame{0xAA,
                0xAA,
                0xAA,
                0x96,
                0x69,
                std::uint8_t(length >> 8),
                std::uint8_t(length),
                0,
                0,
                std::uint8_t(status)};
    frame.insert(frame.end(), data.begin(), data.end());
    std::uint8_t check = 0;
    for (size_t i = 5; i < frame.size(); ++i)
        check ^= frame[i];
    frame.push_back(check);
    return frame;
}

Bytes SimulatedModule::answer(Command command)
{
    switch (command) {
    case Command::findCard:
        return hasCard_ ? frame(0x9F, Bytes(4)) : frame(0x80);
    case Command::selectCard:
        return frame(0x90, Bytes(8));
    case Command::readBase: {
        Bytes data{1, 0, 4, 0};
        data.insert(data.end(), text_.begin(), text_.end());
        data.resize(data.size() + 1024);
        hasCard_ = false;
        return frame(0x90, data);
    }
    default:
        return frame(0x90);
    }
}

void SimulatedModule::serve()
{
    while (!isStopped_) {
        pollfd entry{master_.get(), POLLIN, 0};
        Bytes bytes(10);
        if (poll(&entry, 1, 5) < 1 || read(master_.get(), bytes.data(), bytes.size()) != 10)
            continue;
        const auto command = Command(bytes[7] << 8 | bytes[8]);
        const Bytes proper = answer(command);
        const Bytes sent =
            bytes == commandFrame(command) ? fault_ ? fault_(command, proper) : proper : frame(0x21);
        if (sent == unplugged())
            return master_.reset();
        [[maybe_unused]] const auto written = write(master_.get(), sent.data(), sent.size());
    }
}

Bytes textBlock(std::initializer_list<std::pair<size_t, std::u16string>> fields)
{
    Bytes block;
    for (int i = 0; i < 128; ++i)
        block.insert(block.end(), {' ', 0});
    for (const auto& [begin, characters] : fields)
        for (size_t i = 0; i < characters.size(); ++i) {
            block[begin + 2 * i] = std::uint8_t(characters[i]);
            block[begin + 2 * i + 1] = std::uint8_t(characters[i] >> 8);
        }
    return block;
}

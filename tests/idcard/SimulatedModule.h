#pragma once

#include "CardFrame.h"
#include "UniqueFd.h"

#include <atomic>
#include <functional>
#include <numeric>
#include <poll.h>
#include <pty.h>
#include <string>
#include <thread>

/// A card module on a pseudo-terminal. Like a real one it finds a card once, until it is laid on again.
class SimulatedModule
{
public:
    using Bytes = idcard::Bytes;
    /// Changes an answer, on the module's thread; one of one byte stands for an unplug.
    using Fault = std::function<void(idcard::Command command, Bytes& answer)>;

    explicit SimulatedModule(Bytes text, Fault fault = {}) : text_(std::move(text)), fault_(std::move(fault))
    {
        termios raw{};
        cfmakeraw(&raw);
        int ends[2];
        char name[64];
        openpty(&ends[0], &ends[1], name, &raw, nullptr);
        port = name;
        master_ = mirvak::UniqueFd(ends[0]);
        line_ = mirvak::UniqueFd(ends[1]); // stays up between two users
        thread_ = std::thread([this] { serve(); });
    }
    ~SimulatedModule()
    {
        isStopped_ = true;
        thread_.join();
    }
    void lay() { hasCard_ = true; }

    static Bytes frame(int status, const Bytes& data = {})
    {
        const size_t length = data.size() + 4;
        Bytes frame{0xAA, 0xAA, 0xAA, 0x96, 0x69, std::uint8_t(length >> 8), std::uint8_t(length), 0, 0};
        frame.push_back(std::uint8_t(status));
        frame.insert(frame.end(), data.begin(), data.end());
        frame.push_back(std::accumulate(frame.begin() + 5, frame.end(), std::uint8_t(0), std::bit_xor<>()));
        return frame;
    }

    std::string port;

private:
    Bytes answer(idcard::Command command)
    {
        if (command == idcard::Command::findCard)
            return hasCard_ ? frame(0x9F, Bytes(4)) : frame(0x80);
        if (command != idcard::Command::readBase)
            return frame(0x90, Bytes(command == idcard::Command::selectCard ? 8 : 0));
        hasCard_ = false;
        Bytes data{1, 0, 4, 0};
        data.insert(data.end(), text_.begin(), text_.end());
        data.resize(data.size() + 1024);
        return frame(0x90, data);
    }
    void serve()
    {
        while (!isStopped_) {
            Bytes bytes(10);
            pollfd entry{master_.get(), POLLIN, 0};
            if (poll(&entry, 1, 5) < 1 || read(master_.get(), bytes.data(), bytes.size()) != 10)
                continue;
            const auto command = idcard::Command(bytes[7] << 8 | bytes[8]);
            Bytes sent = bytes == commandFrame(command) ? answer(command) : frame(0x21);
            if (fault_)
                fault_(command, sent);
            if (sent.size() == 1)
                return master_.reset();
            [[maybe_unused]] const auto written = write(master_.get(), sent.data(), sent.size());
        }
    }

    Bytes text_;
    Fault fault_;
    mirvak::UniqueFd master_, line_;
    std::atomic<bool> hasCard_{true}, isStopped_{false};
    std::thread thread_;
};

inline std::u16string wide(std::u16string text, size_t characters)
{
    text.resize(characters, u' ');
    return text;
}

/// A text block that begins with these characters.
inline idcard::Bytes textBlock(const std::u16string& text)
{
    idcard::Bytes block;
    for (const char16_t unit : wide(text, 128))
        block.insert(block.end(), {std::uint8_t(unit), std::uint8_t(unit >> 8)});
    return block;
}

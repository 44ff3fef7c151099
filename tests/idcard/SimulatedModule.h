#pragma once

#include "CardFrame.h"
#include "UniqueFd.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

/// A card module on a pseudo-terminal. Like a real one it finds a card once, until it is laid on again.
class SimulatedModule
{
public:
    /// What is sent in place of `answer`; called on the module's thread.
    using Fault = std::function<idcard::Bytes(idcard::Command command, const idcard::Bytes& answer)>;

    explicit SimulatedModule(idcard::Bytes text, Fault fault = {});
    ~SimulatedModule();

    const std::string& port() const { return port_; }
    void lay() { hasCard_ = true; }

    /// An answer after which the module is gone from its port.
    static idcard::Bytes unplugged() { return idcard::Bytes(1); }
    static idcard::Bytes frame(int status, const idcard::Bytes& data = {});

private:
    void serve();
    idcard::Bytes answer(idcard::Command command);

    idcard::Bytes text_;
    Fault fault_;
    mirvak::UniqueFd master_, slave_; ///< the line stays up between two users
    std::string port_;
    std::atomic<bool> hasCard_{true};
    std::atomic<bool> isStopped_{false};
    std::thread thread_;
};

/// The 256 bytes with these characters from each byte on.
idcard::Bytes textBlock(std::initializer_list<std::pair<size_t, std::u16string>> fields);

#pragma once

#include "CardModule.h"
#include "CardSource.h"

namespace idcard {

/// The cards that a module on a serial line or a HID device reads. A module that was unplugged is taken up
/// again when it is back.
class ModuleCards : public CardSource
{
public:
    ModuleCards(ReaderConfig reader, CardModule::Limits limits) : reader_(std::move(reader)), limits_(limits)
    {
    }
    explicit ModuleCards(const ReaderConfig& reader) : ModuleCards(reader, CardModule::Limits::of(reader)) {}

    bool open() override;
    std::optional<Card> read(int& failure) override;
    ReaderState look() override;

private:
    bool hasModule() const { return module_ && module_->step() != CardModule::Step::gone; }
    void connect();
    void reconnect();
    void settle();
    void dropStale();
    ReaderState stateNow() const;
    Card decode(const CardBlocks& blocks) const;
    void say(const std::string& what);

    ReaderConfig reader_;
    CardModule::Limits limits_;
    std::optional<CardModule> module_;
    CardModule::Clock::time_point nextAttempt_;
    CardModule::Clock::time_point nextSearch_;
    std::optional<Card> ready_;
    CardModule::Clock::time_point readyUntil_;
    bool isUnreadable_ = false;
    std::string lastSaid_; ///< what goes on being wrong is said once
};

} // namespace idcard

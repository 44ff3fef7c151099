#include "ModuleCards.h"

#include "TextBlock.h"
#include "hidcard.h"

#include <cstdio>

namespace idcard {
namespace {

using Clock = CardModule::Clock;
using Step = CardModule::Step;
using Result = CardModule::Result;

constexpr std::chrono::seconds betweenAttempts(1);
constexpr std::chrono::milliseconds betweenSearches(200); // lets the module rest
constexpr std::chrono::seconds freshness(1);              // of a card that nobody has fetched

} // namespace

void ModuleCards::say(const std::string& what)
{
    if (what != lastSaid_)
        std::fprintf(stderr, "card reader %s: %s\n", reader_.name().c_str(), what.c_str());
    lastSaid_ = what;
}

void ModuleCards::connect()
{
    std::string reason;
    CardPort port = CardPort::open(reader_, reason);
    module_.reset();
    if (port.isOpen())
        module_.emplace(std::move(port), limits_);
    else
        say(reason);
}

bool ModuleCards::open()
{
    if (hasModule() && module_->step() != Step::greeting)
        return true;
    lastSaid_.clear();
    if (!hasModule())
        connect();
    if (module_)
        module_->finish();
    settle();
    return hasModule();
}

void ModuleCards::reconnect()
{
    const auto now = Clock::now();
    if (hasModule() || now < nextAttempt_)
        return;
    nextAttempt_ = now + betweenAttempts;
    connect();
}

/// Takes over what the module has come to.
void ModuleCards::settle()
{
    if (!module_ || module_->isBusy())
        return;
    if (const auto blocks = module_->takeCard()) {
        ready_ = decode(*blocks);
        readyUntil_ = Clock::now() + freshness;
    }
    const bool isGone = module_->step() == Step::gone;
    if (module_->result() == Result::failed)
        say(module_->reason());
    else
        lastSaid_.clear();
    if (module_->result() != Result::noCard)
        isUnreadable_ = module_->result() == Result::failed && !isGone;
    if (isGone)
        module_.reset();
}

void ModuleCards::dropStale()
{
    if (ready_ && Clock::now() > readyUntil_)
        ready_.reset();
}

std::optional<Card> ModuleCards::read(int& failure)
{
    lastSaid_.clear();
    failure = HIDCARD_NO_READER;
    if (!open())
        return std::nullopt;
    dropStale();
    if (!ready_) {
        module_->start();
        module_->finish();
        failure = module_->result() == Result::noCard ? HIDCARD_NO_CARD : HIDCARD_READ_FAILED;
        settle();
    }
    if (!hasModule())
        failure = HIDCARD_NO_READER;
    return std::exchange(ready_, std::nullopt);
}

ReaderState ModuleCards::look()
{
    reconnect();
    if (!hasModule())
        return ReaderState::none;
    const bool isSearching = module_->isBusy();
    dropStale();
    module_->advance();
    if (isSearching && !module_->isBusy()) {
        nextSearch_ = Clock::now() + betweenSearches;
        settle();
    } else if (!isSearching && !ready_ && Clock::now() >= nextSearch_) {
        module_->start();
    }
    return stateNow();
}

ReaderState ModuleCards::stateNow() const
{
    if (!hasModule() || module_->step() == Step::greeting)
        return ReaderState::none;
    if (ready_)
        return ReaderState::ready;
    if (module_->step() == Step::selecting || module_->step() == Step::reading)
        return ReaderState::reading;
    return isUnreadable_ ? ReaderState::unreadable : ReaderState::looking;
}

Card ModuleCards::decode(const CardBlocks& blocks) const
{
    TextBlock text = decodeTextBlock(blocks.text).value_or(TextBlock());
    int type = 0;
    if (text.kind == CardKind::foreign)
        type = reader_.foreignType;
    else if (text.kind == CardKind::residence)
        type = reader_.residenceType;
    return {type, std::move(text.texts), {}};
}

} // namespace idcard

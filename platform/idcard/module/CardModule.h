#pragma once

#include "CardPort.h"

#include <chrono>
#include <optional>

namespace idcard {

/// What a card holds, as the module delivers it.
struct CardBlocks
{
    Bytes text;
    Bytes portrait; ///< compressed
};

/// The talk with a card module: is it there, find a card, select it, read it. Nothing waits but finish(); one
/// thread at a time.
class CardModule
{
public:
    using Clock = std::chrono::steady_clock;

    /// How long an answer may take.
    struct Limits
    {
        std::chrono::milliseconds greeting{500};
        std::chrono::milliseconds find{1200};
        std::chrono::milliseconds select{1200};
        std::chrono::milliseconds read{2500};

        /// With the time that a whole card takes on a slow line.
        static Limits of(const ReaderConfig& reader);
    };
    enum class Step { greeting, idle, finding, selecting, reading, gone };
    enum class Result { none, card, noCard, failed };

    /// Asks the module whether it is there.
    CardModule(CardPort port, Limits limits);

    Step step() const { return step_; }
    bool isBusy() const { return step_ != Step::idle && step_ != Step::gone; }
    /// Begins to look for a card, when nothing else goes on.
    void start();
    /// Takes what has come.
    void advance();
    /// Waits until nothing goes on any more.
    void finish();

    Result result() const { return result_; }             ///< of the last search
    const std::string& reason() const { return reason_; } ///< why it failed, or the module is gone
    std::optional<CardBlocks> takeCard();                 ///< once

private:
    void ask(Step step, Command command, std::chrono::milliseconds limit);
    void take(const CardAnswer& answer);
    bool isExpected(const CardAnswer& answer) const;
    void takeFound(const CardAnswer& answer);
    void takeBlocks(const Bytes& data);
    void end(Result result, std::string reason = {});
    void leave(std::string reason);

    CardPort port_;
    Limits limits_;
    AnswerParser parser_;
    Step step_ = Step::idle;
    Clock::time_point deadline_;
    Result result_ = Result::none;
    std::string reason_;
    std::optional<CardBlocks> card_;
};

} // namespace idcard

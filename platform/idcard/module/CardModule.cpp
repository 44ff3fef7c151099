#include "CardModule.h"

#include "TextBlock.h"

#include <algorithm>

namespace idcard {
namespace {

using std::chrono::milliseconds;

constexpr size_t portraitBytes = 1024;
constexpr size_t lengthsBytes = 4;
constexpr size_t wholeCardBytes = 1295;
constexpr int bitsPerByte = 10; // with the start and the stop bit
// Nothing but the contents of a card is longer: serial numbers of cards have eight bytes.
constexpr size_t shortData = 16;

std::string nameOf(int code)
{
    switch (code) {
    case 0x10:
        return "the module got a wrong check byte";
    case 0x11:
        return "the module got a wrong length";
    case 0x21:
    case 0x24:
        return "the module does not know the command";
    case 0x31:
    case 0x32:
        return "the card does not prove to be genuine";
    case 0x33:
        return "the card's data are damaged";
    case 0x40:
        return "not a card of this kind";
    case 0x41:
        return "the card cannot be read";
    case 0x60:
        return "the module's self-test failed";
    case 0x66:
        return "the module is not licensed";
    case 0x80:
        return "the card was taken away";
    case 0x81:
        return "the card does not answer";
    default:
        return "the module answers with code " + std::to_string(code);
    }
}

size_t number(const Bytes& data, size_t at)
{
    return static_cast<size_t>(data[at]) << 8 | data[at + 1];
}

} // namespace

CardModule::Limits CardModule::Limits::of(const ReaderConfig& reader)
{
    Limits limits;
    limits.read +=
        milliseconds(wholeCardBytes * bitsPerByte * 1000 / static_cast<size_t>(std::max(reader.baud, 1)));
    return limits;
}

CardModule::CardModule(CardPort port, Limits limits) : port_(std::move(port)), limits_(limits)
{
    ask(Step::greeting, Command::moduleState, limits_.greeting);
}

void CardModule::start()
{
    if (step_ != Step::idle)
        return;
    result_ = Result::none;
    ask(Step::finding, Command::findCard, limits_.find);
}

void CardModule::ask(Step step, Command command, milliseconds limit)
{
    port_.receive(); // what comes late belongs to an earlier command
    parser_.clear();
    step_ = step;
    deadline_ = Clock::now() + limit;
    if (!port_.isOpen() || !port_.send(commandFrame(command)))
        leave("it does not take a command");
}

void CardModule::advance()
{
    if (!isBusy())
        return;
    const bool isLate = Clock::now() >= deadline_; // before looking, so that a stopped process misses nothing
    const Bytes received = port_.receive();
    parser_.add(received.data(), received.size());
    CardAnswer answer;
    for (auto found = AnswerParser::Found::answer; isBusy() && found != AnswerParser::Found::nothing;) {
        found = parser_.next(answer);
        if (found == AnswerParser::Found::answer)
            take(answer);
        else if (found == AnswerParser::Found::broken)
            end(Result::failed, "a damaged answer");
    }
    if (isBusy() && !port_.isOpen())
        leave("it was unplugged");
    else if (isBusy() && isLate && Clock::now() >= deadline_)
        end(Result::failed, "no whole answer in time");
}

void CardModule::finish()
{
    while (isBusy()) {
        const auto left = std::chrono::ceil<milliseconds>(deadline_ - Clock::now());
        port_.wait(static_cast<int>(std::max(left, milliseconds(0)).count()));
        advance();
    }
}

/// An answer to an earlier command that came late is none to this one.
bool CardModule::isExpected(const CardAnswer& answer) const
{
    if (answer.status != status::done && answer.status != status::cardFound)
        return true; // an error
    const bool isFound = answer.status == status::cardFound;
    return isFound == (step_ == Step::finding) &&
           (answer.data.size() > shortData) == (step_ == Step::reading);
}

void CardModule::take(const CardAnswer& answer)
{
    if (!isExpected(answer))
        return;
    if (answer.status == status::done || answer.status == status::cardFound)
        takeFound(answer);
    else if (answer.status == status::noCard && step_ == Step::finding)
        end(Result::noCard);
    else
        end(Result::failed, nameOf(answer.status));
}

void CardModule::takeFound(const CardAnswer& answer)
{
    if (step_ == Step::finding)
        ask(Step::selecting, Command::selectCard, limits_.select);
    else if (step_ == Step::selecting)
        ask(Step::reading, Command::readBase, limits_.read);
    else if (step_ == Step::reading)
        takeBlocks(answer.data);
    else
        step_ = Step::idle; // it is there
}

void CardModule::takeBlocks(const Bytes& data)
{
    const size_t textBytes = number(data, 0);
    const size_t pictureBytes = number(data, 2);
    if (textBytes != textBlockBytes || pictureBytes > portraitBytes ||
        data.size() != lengthsBytes + textBytes + pictureBytes) {
        end(Result::failed, "the answer's lengths do not fit");
        return;
    }
    const auto textBegin = data.begin() + lengthsBytes;
    const auto portraitBegin = textBegin + textBlockBytes;
    card_ = CardBlocks{Bytes(textBegin, portraitBegin), Bytes(portraitBegin, data.end())};
    end(Result::card);
}

void CardModule::end(Result result, std::string reason)
{
    if (step_ == Step::greeting) {
        leave(std::move(reason));
        return;
    }
    step_ = Step::idle;
    result_ = result;
    reason_ = std::move(reason);
}

void CardModule::leave(std::string reason)
{
    port_ = CardPort();
    step_ = Step::gone;
    result_ = Result::failed;
    reason_ = std::move(reason);
}

std::optional<CardBlocks> CardModule::takeCard()
{
    return std::exchange(card_, std::nullopt);
}

} // namespace idcard

#include "SimulatedModule.h"

#include <gtest/gtest.h>

using namespace idcard;
using Found = AnswerParser::Found;

namespace {

Bytes operator+(Bytes a, const Bytes& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// The statuses of the answers, 0 for what was broken, in the order in which they come.
std::vector<int> statuses(const Bytes& bytes, size_t step)
{
    AnswerParser parser;
    std::vector<int> statuses;
    for (size_t at = 0; at < bytes.size(); at += step) {
        parser.add(bytes.data() + at, std::min(step, bytes.size() - at));
        CardAnswer answer;
        for (Found one = parser.next(answer); one != Found::nothing; one = parser.next(answer)) {
            statuses.push_back(one == Found::answer ? answer.status : 0);
            EXPECT_TRUE(statuses.back() != 0x9F || answer.data == Bytes({1, 2, 3, 4}));
        }
    }
    return statuses;
}

} // namespace

TEST(CardFrame, CommandsAndAnswersAreThoseOfTheProtocol)
{
    const Bytes head{0xAA, 0xAA, 0xAA, 0x96, 0x69};
    EXPECT_EQ(commandFrame(Command::findCard), (head + Bytes{0, 3, 0x20, 1, 0x22}));
    EXPECT_EQ(commandFrame(Command::selectCard), (head + Bytes{0, 3, 0x20, 2, 0x21}));
    EXPECT_EQ(commandFrame(Command::readBase), (head + Bytes{0, 3, 0x30, 1, 0x32}));
    EXPECT_EQ(commandFrame(Command::moduleState), (head + Bytes{0, 3, 0x11, 0xFF, 0xED}));

    const Bytes found = head + Bytes{0, 8, 0, 0, 0x9F, 1, 2, 3, 4, 0x93};
    const Bytes wrong = head + Bytes{0, 8, 0, 0, 0x9F, 1, 2, 3, 4, 0x92};
    const Bytes noCard = head + Bytes{0, 4, 0, 0, 0x80, 0x84};
    const std::pair<Bytes, std::vector<int>> streams[] = {
        {Bytes{0, 0x69, 0xAA, 0xAA} + found + Bytes(40) + noCard, {0x9F, 0x80}}, // between filled up reports
        {wrong + found, {0, 0x9F}},
        {head + Bytes{0, 3} + found, {0, 0x9F}},                    // too short for a status
        {head + Bytes{0xFF, 0xFF} + found, {0, 0x9F}},              // would swallow everything
        {head + Bytes{0, 12, 0} + found + noCard, {0, 0x9F, 0x80}}, // a good frame in what the length claims
        {Bytes(found.begin(), found.end() - 1), {}},
        {SimulatedModule::frame(0x90, Bytes(1284)), {0x90}}};
    for (const auto& [stream, expected] : streams)
        for (const size_t step : {size_t(1), size_t(7), size_t(4096)})
            EXPECT_EQ(statuses(stream, step), expected) << step;
}

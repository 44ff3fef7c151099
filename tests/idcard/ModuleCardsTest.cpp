// Whole reads through the real protocol, over a pseudo-terminal.
#include "ModuleCards.h"

#include "SimulatedModule.h"
#include "TempDir.h"
#include "hidcard.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/socket.h>

using namespace idcard;
using std::chrono::milliseconds;

namespace {

const Bytes resident = textBlock({{0, u"张样本"}, {30, u"2"}, {32, u"01"}, {52, u"示例路"}});
const Bytes foreign = textBlock({{0, u"ALEX"}, {120, u"1"}, {122, u"XXX0"}, {248, u"I"}});
const Bytes residence = textBlock({{0, u"陈"}, {30, u"1"}, {238, u"02"}, {248, u"J"}});
constexpr CardModule::Limits patient{
    milliseconds(20000), milliseconds(20000), milliseconds(20000), milliseconds(20000)};

ReaderConfig at(const std::string& port)
{
    ReaderConfig reader;
    reader.port = port;
    return reader;
}

/// Asks until that state comes.
bool comes(ReaderState wanted, ModuleCards& cards)
{
    for (int i = 0; i < 20000; ++i) {
        if (cards.look() == wanted)
            return true;
        std::this_thread::sleep_for(milliseconds(1));
    }
    return false;
}

/// Tries until it succeeds: on a busy machine an answer may come late once more.
std::string nameAfterRetries(ModuleCards& cards, SimulatedModule& module)
{
    for (int i = 0; i < 200; ++i) {
        module.lay();
        int failure = 0;
        if (auto card = cards.read(failure))
            return card->texts[Field::name];
    }
    return "none";
}

std::string field(int index)
{
    char text[HIDCARD_TEXT_BYTES] = "untouched";
    return h_idcard_readData(0, index, text) == HIDCARD_OK ? text : "-";
}

} // namespace

TEST(ModuleCards, ACardIsReadThroughTheLibrary)
{
    const TempDir folder;
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    std::filesystem::create_directory(folder.file("lumro"));
    const struct
    {
        const Bytes& text;
        std::string types;
        int type;
        std::vector<std::string> fields;
    } cards[] = {{resident, "", 0, {"张样本", "2", "01", "", "示例路"}},
                 {foreign, "", 2, {"ALEX", "1", "XXX0"}},
                 {residence, "", 1, {"陈", "1", "", "", "", "", "", "", "", "02", "-"}},
                 {foreign, "types = { foreign = 3; };", 3, {"ALEX", "1", "", "", "", "XXX0", "", "", "-"}}};
    for (const auto& card : cards) {
        SimulatedModule module(card.text);
        folder.write("lumro/idcard.cfg", "port = \"" + module.port() + "\"; " + card.types);
        const std::string portrait = folder.write("elphoto.bmp", "of somebody else");
        h_idcard_setPhotoPath(portrait.c_str());
        ASSERT_EQ(h_idcard_openDevice(), HIDCARD_OK);
        EXPECT_EQ(field(0), "-");
        EXPECT_EQ(h_idcard_readInfo(), card.type);
        for (size_t i = 0; i < card.fields.size(); ++i)
            EXPECT_EQ(field(int(i)), card.fields[i]) << card.type << " " << i;
        EXPECT_EQ(field(-1) + field(99), "--");
        EXPECT_FALSE(std::filesystem::exists(portrait));
        EXPECT_EQ(h_idcard_readInfo(), HIDCARD_NO_CARD) << "it has not been lifted";
        EXPECT_EQ(field(0), "-");
        module.lay();
        EXPECT_EQ(h_idcard_readInfo(), card.type);
        h_idcard_closeDevice();
    }
    for (const char* wrong : {"port = \"/dev/null\";",
                              "port = \"/nowhere\";",
                              "usb = \"0000ffff\";",
                              "usb = \"x\";",
                              "port = 7;",
                              "port = \"/dev/null\"; types = { foreign = 4; };",
                              "}"}) {
        folder.write("lumro/idcard.cfg", wrong);
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(h_idcard_openDevice(), HIDCARD_NO_READER) << wrong;
        EXPECT_NE(::testing::internal::GetCapturedStderr(), "") << wrong;
        EXPECT_EQ(h_idcard_readInfo(), HIDCARD_NO_READER);
        EXPECT_EQ(h_idcard_state(), HIDCARD_STATE_NONE);
    }
    unsetenv("XDG_CONFIG_HOME");
}

TEST(ModuleCards, ADamagedAnswerFailsOnceWithOneLine)
{
    enum Kind { silent, half, wrongCheck, longer, textLength, wholeCode, late };
    const struct
    {
        Kind kind;
        Command command;
        bool isPatient; ///< the fault is seen at once
    } faults[] = {{silent, Command::findCard, false},
                  {silent, Command::readBase, false},
                  {half, Command::readBase, false},
                  {longer, Command::selectCard, false},
                  {late, Command::findCard, false},
                  {late, Command::readBase, false},
                  {wrongCheck, Command::readBase, true},
                  {wrongCheck, Command::findCard, true},
                  {textLength, Command::readBase, true},
                  {wholeCode, Command::selectCard, true},
                  {wholeCode, Command::readBase, true}};
    for (const auto& fault : faults) {
        SCOPED_TRACE(std::to_string(fault.kind) + " " + std::to_string(int(fault.command)));
        auto kept = std::make_shared<Bytes>();
        auto isOver = std::make_shared<bool>(false);
        SimulatedModule module(resident, [=](Command command, Bytes answer) {
            answer.insert(answer.begin(), kept->begin(), kept->end());
            kept->clear();
            if (command != fault.command || std::exchange(*isOver, true))
                return answer;
            switch (fault.kind) {
            case silent:
                return Bytes();
            case half:
                answer.resize(answer.size() / 2);
                break;
            case wrongCheck:
                answer.back() ^= 0x40;
                break;
            case longer:
                answer[6] += 5, answer.back() ^= 5;
                break;
            case textLength:
                answer[11] += 1, answer.back() ^= 1;
                break;
            case wholeCode:
                return SimulatedModule::frame(0x41);
            case late:
                *kept = answer;
                return Bytes();
            }
            return answer;
        });
        CardModule::Limits limits = patient;
        if (!fault.isPatient)
            limits.find = limits.select = limits.read = milliseconds(150);
        ModuleCards cards(at(module.port()), limits);
        ASSERT_TRUE(cards.open());
        int failure = 0;
        ::testing::internal::CaptureStderr();
        EXPECT_FALSE(cards.read(failure));
        const std::string line = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
        EXPECT_EQ(failure, HIDCARD_READ_FAILED);
        EXPECT_EQ(nameAfterRetries(cards, module), "张样本");
    }
}

TEST(ModuleCards, TheWatchTakesEachCardOnceAndAReaderThatComesBack)
{
    const TempDir folder;
    const std::string port = folder.file("port");
    auto module = std::make_unique<SimulatedModule>(resident);
    std::filesystem::create_symlink(module->port(), port);
    ModuleCards cards(at(port), patient);
    EXPECT_TRUE(comes(ReaderState::looking, cards)) << "without open()";
    EXPECT_TRUE(comes(ReaderState::ready, cards));
    int failure = 0;
    EXPECT_EQ(cards.read(failure).value().texts[Field::name], "张样本");
    for (int i = 0; i < 500; ++i, std::this_thread::sleep_for(milliseconds(1)))
        ASSERT_EQ(cards.look(), ReaderState::looking) << "it lies there still";
    module->lay();
    EXPECT_TRUE(comes(ReaderState::reading, cards));
    EXPECT_TRUE(comes(ReaderState::ready, cards));
    EXPECT_TRUE(comes(ReaderState::looking, cards)) << "nobody has fetched it";
    EXPECT_FALSE(cards.read(failure));
    EXPECT_EQ(failure, HIDCARD_NO_CARD);

    module.reset();
    EXPECT_FALSE(cards.read(failure));
    EXPECT_EQ(failure, HIDCARD_NO_READER);
    EXPECT_EQ(cards.look(), ReaderState::none);
    std::atomic<bool> isDamaged{true};
    module = std::make_unique<SimulatedModule>(foreign, [&](Command command, const Bytes& answer) {
        return isDamaged && command == Command::selectCard ? SimulatedModule::frame(0x81) : answer;
    });
    std::filesystem::remove(port);
    std::filesystem::create_symlink(module->port(), port);
    EXPECT_TRUE(comes(ReaderState::unreadable, cards));
    isDamaged = false;
    EXPECT_TRUE(comes(ReaderState::ready, cards));
    EXPECT_EQ(cards.read(failure).value().type, 2);
}

TEST(ModuleCards, AReaderThatGoesInTheMidstOfAReadIsGone)
{
    SimulatedModule module(resident, [](Command command, const Bytes& answer) {
        return command == Command::readBase ? SimulatedModule::unplugged() : answer;
    });
    ModuleCards cards(at(module.port()), patient);
    ASSERT_TRUE(cards.open());
    int failure = 0;
    EXPECT_FALSE(cards.read(failure));
    EXPECT_EQ(failure, HIDCARD_NO_READER);
}

TEST(ModuleCards, FramesTravelInReportsOfADevice)
{
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK, 0, ends), 0);
    const mirvak::UniqueFd device(ends[1]);
    CardModule module(CardPort(mirvak::UniqueFd(ends[0]), CardPort::hidReportBytes), patient);
    Bytes report(100);
    const Bytes greeting = commandFrame(Command::moduleState);
    ASSERT_EQ(read(device.get(), report.data(), report.size()), 65);
    EXPECT_EQ(Bytes(report.begin() + 1, report.begin() + 11), greeting);
    EXPECT_EQ(std::count(report.begin() + 11, report.begin() + 65, 0) + (report[0] == 0), 55);
    Bytes answer = SimulatedModule::frame(0x90);
    answer.resize(64);
    ASSERT_EQ(write(device.get(), answer.data(), answer.size()), 64);
    module.finish();
    EXPECT_EQ(module.step(), CardModule::Step::idle);
}

// Whole reads through the real protocol, over a pseudo-terminal.
#include "ModuleCards.h"

#include "SimulatedModule.h"
#include "TempDir.h"
#include "hidcard.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <sys/socket.h>

using namespace idcard;
using std::chrono::milliseconds;
namespace fs = std::filesystem;

namespace {

const Bytes resident = textBlock(wide(u"张样本", 15) + u"201        示例路");
const Bytes foreign = textBlock(wide(wide(u"ALEX", 60) + u"1XXX0", 124) + u"I");
const Bytes residence = textBlock(wide(wide(wide(u"陈", 15) + u"1", 119) + u"02", 124) + u"J");

CardModule::Limits limits(int readMs = 20000)
{
    return {milliseconds(20000), milliseconds(readMs), milliseconds(readMs), milliseconds(readMs)};
}

ReaderConfig at(const std::string& port)
{
    return {port, {}};
}

/// Asks until that state comes.
bool comes(ReaderState wanted, ModuleCards& cards, int times = 20000)
{
    for (int i = 0; i < times; ++i, std::this_thread::sleep_for(milliseconds(1)))
        if (cards.look() == wanted)
            return true;
    return false;
}

/// The first ten texts, "-" for one that is not there.
std::string texts()
{
    std::string all;
    for (int index = -1; index < 10; ++index) {
        char text[HIDCARD_TEXT_BYTES];
        all += h_idcard_readData(0, index, text) == HIDCARD_OK ? text + std::string("|") : "-|";
    }
    return all;
}

} // namespace

TEST(ModuleCards, ACardIsReadThroughTheLibrary)
{
    const TempDir folder;
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    fs::create_directory(folder.file("lumro"));
    const std::string none = "-|-|-|-|-|-|-|-|-|-|-|";
    const std::tuple<const Bytes&, const char*, int, std::string> cards[] = {
        {resident, "", 0, "-|张样本|2|01||示例路|||||-|"},
        {foreign, "", 2, "-|ALEX|1|XXX0||||||||"},
        {residence, "", 1, "-|陈|1||||||||02|"},
        {foreign, "types = { foreign = 3; };", 3, "-|ALEX|1||||XXX0|||-||"}};
    for (const auto& [text, types, type, told] : cards) {
        SimulatedModule module(text);
        folder.write("lumro/idcard.cfg", "port = \"" + module.port + "\"; " + types);
        const std::string portrait = folder.write("elphoto.bmp", "of somebody else");
        h_idcard_setPhotoPath(portrait.c_str());
        ASSERT_EQ(h_idcard_openDevice(), HIDCARD_OK);
        EXPECT_EQ(texts(), none);
        EXPECT_EQ(h_idcard_readInfo(), type);
        EXPECT_EQ(texts(), told);
        EXPECT_FALSE(fs::exists(portrait));
        EXPECT_EQ(h_idcard_readInfo(), HIDCARD_NO_CARD) << "it has not been lifted";
        EXPECT_EQ(texts(), none);
        h_idcard_closeDevice();
    }
    const std::string wrongs =
        "port = \"/dev/null\";\nport = \"/nowhere\";\nusb = \"0000ffff\";\nusb = \"x\";\n"
        "port = 7;\nport = \"/dev/null\"; types = { foreign = 4; };\n}\n";
    std::istringstream lines(wrongs);
    for (std::string wrong; std::getline(lines, wrong);) {
        folder.write("lumro/idcard.cfg", wrong);
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(h_idcard_openDevice(), HIDCARD_NO_READER) << wrong;
        EXPECT_NE(::testing::internal::GetCapturedStderr(), "") << wrong;
        EXPECT_EQ(h_idcard_readInfo() + h_idcard_state(), HIDCARD_NO_READER + HIDCARD_STATE_NONE);
    }
    SimulatedModule module(resident);
    folder.write("lumro/idcard.cfg", "port = \"" + module.port + "\";");
    setenv("LUMRO_DESK", folder.write("desk.cfg", "real = false;").c_str(), 1);
    EXPECT_EQ(h_idcard_openDevice(), HIDCARD_NO_READER) << "a desk without real devices";
    unsetenv("LUMRO_DESK");
    EXPECT_EQ(h_idcard_openDevice(), HIDCARD_OK);
    h_idcard_closeDevice();
    unsetenv("XDG_CONFIG_HOME");
}

TEST(ReaderConfig, IsTakenAsItIsWrittenOrNotAtAll)
{
    const TempDir folder;
    const auto load = [&](const std::string& text) {
        ::testing::internal::CaptureStderr();
        const auto reader = ReaderConfig::load(folder.write("idcard.cfg", text));
        EXPECT_EQ(::testing::internal::GetCapturedStderr().empty(), reader.has_value()) << text;
        return reader;
    };
    const auto line = load("port = \"/dev/ttyS0\"; baud = 9600; types = { foreign = 3; residence = 3; };");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->name() + std::to_string(line->baud), "/dev/ttyS09600");
    EXPECT_EQ(line->foreignType * 10 + line->residenceType, 33);
    EXPECT_EQ(load("usb = \"04a1b2c3\";").value_or(ReaderConfig()).name(), "USB 04a1b2c3");
    for (const char* wrong : {"",
                              "usb = \"04a1\";",
                              "usb = \"04A1B2C3\";",
                              "usb = \"04a1b2c3\"; port = \"/dev/ttyS0\";",
                              "port = \"/dev/ttyS0\"; types = { foreign = 0; };",
                              "port = \"/dev/ttyS0\"; types = { residence = 4; };"})
        EXPECT_FALSE(load(wrong)) << wrong;
    EXPECT_FALSE(ReaderConfig::load(folder.file("none")));
}

TEST(ModuleCards, ADamagedAnswerFailsOnceWithOneLine)
{
    Bytes kept;
    const struct
    {
        const char* name;
        Command command;
        int limit; ///< ms; long where the fault is to be seen at once
        std::function<void(Bytes& answer)> change;
        int failure = HIDCARD_READ_FAILED;
    } faults[] = {
        {"silent find", Command::findCard, 150, [](Bytes& a) { a.clear(); }},
        {"silent read", Command::readBase, 150, [](Bytes& a) { a.clear(); }},
        {"half", Command::readBase, 150, [](Bytes& a) { a.resize(a.size() / 2); }},
        {"length", Command::selectCard, 150, [](Bytes& a) { a[6] += 5, a.back() ^= 5; }},
        {"late find", Command::findCard, 150, [&](Bytes& a) { kept.swap(a); }},
        {"late read", Command::readBase, 150, [&](Bytes& a) { kept.swap(a); }},
        {"check", Command::readBase, 20000, [](Bytes& a) { a.back() ^= 0x40; }},
        {"check of find", Command::findCard, 20000, [](Bytes& a) { a.back() ^= 0x40; }},
        {"text's length", Command::readBase, 20000, [](Bytes& a) { a[11] += 1, a.back() ^= 1; }},
        {"picture's length", Command::readBase, 20000, [](Bytes& a) { a[12] = 3, a.back() ^= 7; }},
        {"code", Command::selectCard, 20000, [](Bytes& a) { a = SimulatedModule::frame(0x41); }},
        {"code of find", Command::findCard, 20000, [](Bytes& a) { a = SimulatedModule::frame(0x60); }},
        {"pulled", Command::readBase, 20000, [](Bytes& a) { a = SimulatedModule::frame(0x80); }},
        {"unplugged", Command::readBase, 20000, [](Bytes& a) { a.resize(1); }, HIDCARD_NO_READER}};
    for (const auto& fault : faults) {
        SCOPED_TRACE(fault.name);
        kept.clear();
        SimulatedModule module(resident, [&, isOver = false](Command command, Bytes& answer) mutable {
            answer.insert(answer.begin(), kept.begin(), kept.end());
            kept.clear();
            if (command == fault.command && !std::exchange(isOver, true))
                fault.change(answer);
        });
        ModuleCards cards(at(module.port), limits(fault.limit));
        ASSERT_TRUE(cards.open());
        int failure = 0;
        ::testing::internal::CaptureStderr();
        EXPECT_FALSE(cards.read(failure));
        const std::string line = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
        EXPECT_EQ(failure, fault.failure);
        std::optional<Card> card; // on a busy machine an answer may be late once more
        for (int i = 0; i < 200 && !card && failure != HIDCARD_NO_READER; ++i, module.lay())
            card = cards.read(failure);
        EXPECT_EQ(card ? card->texts[Field::name] : "", failure == HIDCARD_NO_READER ? "" : "张样本");
    }
}

TEST(ModuleCards, TheWatchTakesEachCardOnceAndAReaderThatComesBack)
{
    const TempDir folder;
    const std::string port = folder.file("port");
    auto module = std::make_unique<SimulatedModule>(resident);
    fs::create_symlink(module->port, port);
    ModuleCards cards(at(port), limits());
    EXPECT_TRUE(comes(ReaderState::looking, cards)) << "without open()";
    EXPECT_TRUE(comes(ReaderState::ready, cards));
    int failure = 0;
    EXPECT_EQ(cards.read(failure).value().texts[Field::name], "张样本");
    EXPECT_FALSE(comes(ReaderState::ready, cards, 500)) << "it lies there still";
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
    module = std::make_unique<SimulatedModule>(foreign, [&](Command command, Bytes& answer) {
        if (isDamaged && command == Command::selectCard)
            answer = SimulatedModule::frame(0x81);
    });
    fs::remove(port);
    fs::create_symlink(module->port, port);
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(comes(ReaderState::unreadable, cards));
    EXPECT_FALSE(comes(ReaderState::ready, cards, 1000));
    const std::string said = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(said.find("does not answer"), said.rfind("does not answer")) << said;
    isDamaged = false;
    EXPECT_TRUE(comes(ReaderState::ready, cards));
    EXPECT_EQ(cards.read(failure).value().type, 2);
}

TEST(ModuleCards, ACardThatCannotBeReadIsToldOfUntilAnotherComes)
{
    std::atomic<bool> isDamaged{true};
    std::atomic<int> searches{0};
    SimulatedModule module(resident, [&](Command command, Bytes& answer) {
        searches += command == Command::findCard;
        if (isDamaged && command == Command::readBase)
            answer = SimulatedModule::frame(0x41);
    });
    ModuleCards cards(at(module.port), limits());
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(comes(ReaderState::unreadable, cards));
    const int until = searches + 4; // the card lies there, and is not found a second time
    for (int i = 0; i < 20000 && searches < until; ++i, std::this_thread::sleep_for(milliseconds(1)))
        ASSERT_EQ(cards.look(), ReaderState::unreadable);
    EXPECT_GE(searches, until);
    isDamaged = false;
    module.lay();
    EXPECT_TRUE(comes(ReaderState::ready, cards));
    EXPECT_NE(::testing::internal::GetCapturedStderr(), "");
}

TEST(ModuleCards, FramesTravelInReportsOfADevice)
{
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK, 0, ends), 0);
    const mirvak::UniqueFd device(ends[1]);
    CardModule module(CardPort(mirvak::UniqueFd(ends[0]), CardPort::hidReportBytes), limits());
    Bytes expected = commandFrame(Command::moduleState);
    expected.insert(expected.begin(), 0); // the report's number
    expected.resize(65);
    Bytes report(100);
    report.resize(size_t(read(device.get(), report.data(), report.size())));
    EXPECT_EQ(report, expected);
    Bytes answer = SimulatedModule::frame(0x90);
    answer.resize(64);
    ASSERT_EQ(write(device.get(), answer.data(), answer.size()), 64);
    module.finish();
    EXPECT_EQ(module.step(), CardModule::Step::idle);
}

TEST(ModuleCards, AnErrorThatComesLateIsNoneOfTheNextSearch)
{
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
    const mirvak::UniqueFd device(ends[1]);
    const auto send = [&](int status, size_t data) {
        const Bytes answer = SimulatedModule::frame(status, Bytes(data));
        EXPECT_EQ(write(device.get(), answer.data(), answer.size()), ssize_t(answer.size()));
    };
    CardModule::Limits brief = limits();
    brief.find = milliseconds(0);
    CardModule module(CardPort(mirvak::UniqueFd(ends[0])), brief);
    send(status::done, 0);
    module.finish();
    module.start();
    module.finish();
    ASSERT_EQ(module.step(), CardModule::Step::idle) << "no answer in time";
    send(status::noCard, 0);
    module.start();
    send(status::cardFound, 4);
    module.advance();
    EXPECT_EQ(module.step(), CardModule::Step::selecting);
}

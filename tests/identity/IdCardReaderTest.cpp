// The window of identity cards over the virtual desk's reader.
#include "IdCardReader.h"

#include "CardDesk.h"
#include "CardWatch.h"
#include "Dialogs.h"
#include "DiskFullAt.h"
#include "Part.h"
#include "UniqueFd.h"
#include "Words.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include <thread>

namespace fs = std::filesystem;

namespace {

const std::string texts =
    R"(name = "NAME"; other_name = "OTHER"; gender = "2"; nation = "01"; birth = "19870654";
    address = "ADDRESS"; number = "NUMBER"; authority = "AUTHORITY"; from = "FROM"; to = "TO"; pass_number = "PASS";
    issues = "ISSUES"; version = "VERSION"; category = "CATEGORY"; )";
const std::string header = "姓名,性别,民族,出生,住址,公民身份号码,签发机关,有效期限\r\n";
const std::string row = "NAME,女,汉族,19870654,ADDRESS,NUMBER,AUTHORITY,FROM-TO\r\n";

class IdCard : public CardDesk
{
protected:
    IdCard()
    {
        fs::create_directory(folder.file("tmp"));
        setenv("TMPDIR", folder.file("tmp").c_str(), 1);
        Dialogs::instance().information = [this](QWidget*, const QString& title, const QString& text, auto) {
            told << title << text;
            return QMessageBox::Ok;
        };
    }
    ~IdCard() override
    {
        Dialogs::instance() = Dialogs::real();
        unsetenv("TMPDIR");
    }
    void lay(int type, const std::string& more = texts, Qt::GlobalColor colour = Qt::red)
    {
        QImage face(102, 126, QImage::Format_RGB888);
        face.fill(colour);
        face.save(QString::fromStdString(folder.file("cards/face.png")));
        CardDesk::lay(std::to_string(laid.time_since_epoch().count()) + ".cfg",
                      "type = " + std::to_string(type) + "; picture = \"face.png\"; " + more);
    }
    void press(const char* button) { part<QPushButton>(*window, button)->click(); }
    /// Lays the card there and reads it. @return all boxes
    std::string read(int type, const std::string& more = texts, Qt::GlobalColor colour = Qt::red)
    {
        if (!window)
            window = std::make_unique<IdCardReader>(nullptr, nullptr);
        lay(type, more, colour);
        press("buttonRead");
        return boxes();
    }
    std::string boxes() const
    {
        std::string all;
        for (const auto* box : window->findChildren<QLineEdit*>())
            all += box == part<QLineEdit>(*window, "editPath") ? "" : box->text().toStdString() + "|";
        return all;
    }
    QColor photo() const
    {
        const QPixmap shown = part<QLabel>(*window, "labelPhoto")->pixmap(Qt::ReturnByValue);
        return shown.isNull() ? QColor() : shown.toImage().pixelColor(50, 60);
    }
    std::string save(const std::string& name)
    {
        window->SetCardPath(QString::fromStdString(folder.file(name)));
        press("buttonSave");
        return part<QLabel>(*window, "labelNote")->text().toStdString();
    }
    static void expectPrivate(const fs::path& file)
    {
        EXPECT_EQ(fs::symlink_status(file).permissions() & fs::perms(077), fs::perms::none) << file;
    }

    QStringList told;
    std::unique_ptr<IdCardReader> window;
};

} // namespace

TEST_F(IdCard, EachTypeHasItsPlaces)
{
    EXPECT_EQ(read(0), "NAME|女|汉族|1987|06|54|ADDRESS|NUMBER|AUTHORITY|FROM-TO|");
    EXPECT_EQ(photo(), Qt::red);
    EXPECT_EQ(read(1, "gender = \"1\"; birth = \"20011231\"; authority = \"there\";", Qt::blue),
              "|男|汉族|2001|12|31|||there|-|")
        << "the nation stays";
    EXPECT_EQ(photo(), Qt::blue) << "not the face of the person before";
    EXPECT_EQ(read(1), "NAME|女|汉族|1987|06|54|ADDRESS|NUMBER|AUTHORITY|FROM-TO|");
    EXPECT_EQ(read(2), "NAME|女|01|1987|06|54|OTHER|NUMBER|AUTHORITY|FROM-TO|");
    const std::string third = "NAME|女|AUTHORITY|1987|06|54|ADDRESS|NUMBER|AUTHORITY|FROM-TO|";
    EXPECT_EQ(read(3), third);
    EXPECT_EQ(read(4, "name = \"nobody\";"), third);
    ReadZktCard card;
    int type = 0;
    for (const int size : {10, 11, 12, 14, 0}) {
        lay(type);
        EXPECT_EQ(card.readhycardinfo(), type++);
        const QStringList list = card.gethycardinfo();
        EXPECT_EQ(list.size(), size);
        EXPECT_TRUE(list.isEmpty() || list.last() == QDir::tempPath() + QStringLiteral("/elphoto.bmp"));
    }
    fs::remove_all(folder.file("cards"));
    EXPECT_LT(card.readhycardinfo(), 0);
    EXPECT_EQ(card.gethycardinfo(), QStringList());
    press("buttonRead");
    EXPECT_EQ(boxes(), third) << "no card";
    window->clearinfos();
    EXPECT_EQ(boxes(), "||||||||||");
    EXPECT_FALSE(photo().isValid());
    EXPECT_EQ(told, QStringList());
}

TEST_F(IdCard, SavingAddsARowAndThePortrait)
{
    read(0);
    EXPECT_EQ(save("new/deep/cardinfo.cvs"), "The card has been saved.");
    EXPECT_EQ(folder.content("new/deep/cardinfo.cvs"), header + row);
    save("new/deep/cardinfo.cvs");
    EXPECT_EQ(folder.content("new/deep/cardinfo.cvs"), header + row + row);
    for (const auto& entry : fs::recursive_directory_iterator(folder.file("new")))
        expectPrivate(entry.path());
    expectPrivate(folder.file("new"));
    expectPrivate(folder.file("tmp/elphoto.bmp"));
    EXPECT_EQ(folder.content("new/deep/NUMBER.jpg").substr(0, 2), "\xFF\xD8");

    const std::string longText(400, 'a');
    read(0, "name = \"N\"; address = \"" + longText + "\";", Qt::blue);
    EXPECT_EQ(part<QLabel>(*window, "labelNote")->text(), QString()) << "that the last card was saved";
    EXPECT_EQ(part<QLineEdit>(*window, "editAddress")->cursorPosition(), 0) << "a long text shows its begin";
    read(0, texts, Qt::blue);
    folder.write("empty", "");
    folder.write("NUMBER.jpg", "an earlier one");
    save("empty");
    EXPECT_EQ(folder.content("empty"), row) << "a file that is there gets no header";
    EXPECT_GT(QImage(QString::fromStdString(folder.file("NUMBER.jpg"))).pixelColor(50, 60).blue(), 240);
    read(0, "name = \"a,b\"; address = \"%6%8\"; number = \"1\"; to = \"长期\"; gender = \"9\";");
    save("empty");
    EXPECT_EQ(folder.content("empty"), row + "a,b,未说明的性别,,,1-长期,1,,-长期\r\n")
        << "places are filled in turn";
    for (const char* incomplete : {"address = \"there\";", "name = \"somebody\";"}) {
        read(0, incomplete);
        save("unwanted");
    }
    EXPECT_TRUE(fs::exists(folder.file("tmp/elphoto.bmp")));
    window.reset();
    EXPECT_FALSE(fs::exists(folder.file("tmp/elphoto.bmp")));
    EXPECT_FALSE(fs::exists(folder.file("unwanted")) || fs::exists(folder.file(".jpg")));
}

TEST_F(IdCard, ARowIsSavedWholeOrNotAtAll)
{
    read(0);
    const auto expectRefusal = [this](const char* name, const char* why) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(save(name), "The card could not be saved. Please check the file.");
        const std::string said = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 2) << said; // the path, and the reason
        EXPECT_NE(said.find(why), std::string::npos) << said;
        EXPECT_EQ(said.find("NUMBER"), std::string::npos) << said;
    };
    expectRefusal("cards", "Is a directory");
    expectPrivate(folder.file("NUMBER.jpg")); // it counts by itself
    ASSERT_EQ(mkfifo(folder.file("fifo").c_str(), 0600), 0);
    const mirvak::UniqueFd fifo(open(folder.file("fifo").c_str(), O_RDONLY | O_NONBLOCK));
    expectRefusal("fifo", "Invalid argument");
    char written = 0;
    EXPECT_LT(::read(fifo.get(), &written, 1), 1);
    fs::create_symlink("nowhere", folder.file("link"));
    expectRefusal("link", "cannot write");
    part<QLabel>(*window, "labelPhoto")->clear();
    const std::string earlier(5000, 'x');
    const mirvak::UniqueFd other(open(folder.write("full", earlier).c_str(), O_RDWR));
    {
        const DiskFullAt limit(5000 + 20);
        expectRefusal("full", "No space left");
    }
    {
        const DiskFullAt limit(100);
        window->writeinfo2file(QString::fromStdString(folder.file("fresh")));
    }
    EXPECT_FALSE(fs::exists(folder.file("fresh")));
    ASSERT_EQ(flock(other.get(), LOCK_EX), 0);
    expectRefusal("full", "busy");
    ASSERT_EQ(flock(other.get(), LOCK_UN), 0);
    save("full");
    EXPECT_EQ(folder.content("full"), earlier + row);
    read(0, "name = \"a\"; address = \"b\"; number = \"../outside\";");
    EXPECT_EQ(save("cards/info"), "The portrait could not be saved.");
    EXPECT_FALSE(fs::exists(folder.file("outside.jpg")));
}

// A program that saves the list anew holds it, puts another file in its place and lets go.
TEST_F(IdCard, ARowGoesIntoTheFileThatHasTheNameByThen)
{
    read(0);
    folder.write("newer", "saved anew\n");
    const mirvak::UniqueFd older(open(folder.write("list", "as it was\n").c_str(), O_RDWR));
    const mirvak::UniqueFd opened(inotify_init1(IN_CLOEXEC));
    ASSERT_EQ(flock(older.get(), LOCK_EX), 0);
    ASSERT_GE(inotify_add_watch(opened.get(), folder.file("list").c_str(), IN_OPEN), 0);
    std::thread program([&] {
        pollfd untilThen{opened.get(), POLLIN, 0};
        ::poll(&untilThen, 1, 20000);
        fs::rename(folder.file("newer"), folder.file("list"));
        flock(older.get(), LOCK_UN);
    });
    EXPECT_EQ(save("list"), "The card has been saved.");
    program.join();
    EXPECT_EQ(folder.content("list"), "saved anew\n" + row);
    struct stat size
    {
    };
    ASSERT_EQ(fstat(older.get(), &size), 0);
    EXPECT_EQ(size.st_size, 10);
}

TEST_F(IdCard, ItFollowsTheReaderWhileItIsOpen)
{
    fs::rename(folder.file("cards"), folder.file("away"));
    window = std::make_unique<IdCardReader>(nullptr, nullptr);
    EXPECT_EQ(told, (QStringList{QStringLiteral("Error"), QStringLiteral("Init IDCard failed!")}));
    const auto says = [this](const char* text) {
        return QTest::qWaitFor(
            [=] { return part<QLabel>(*window, "labelState")->text() == QLatin1String(text); }, 20000);
    };
    window->show();
    EXPECT_TRUE(says("No card reader is attached."));
    fs::rename(folder.file("away"), folder.file("cards"));
    EXPECT_TRUE(says("Please lay a card on the reader."));
    lay(0);
    EXPECT_TRUE(says("The card has been read. Please lay on the next one."));
    {
        ReadZktCard other; // of another window
        other.inithycard();
        EXPECT_TRUE(says("Please lay a card on the reader and press \"Read\"."));
        lay(0, "name = \"of the other\";");
        EXPECT_EQ(other.readhycardinfo(), 0);
    }
    EXPECT_TRUE(says("The card has been read. Please lay on the next one."));
    EXPECT_EQ(boxes().substr(0, 5), "NAME|") << "not what the other one has read";
    part<QLineEdit>(*window, "editName")->setText(QStringLiteral("corrected"));
    lay(1, "nonsense = 1;");
    EXPECT_TRUE(says("The card could not be read. Please lift it and lay it on again."));
    EXPECT_EQ(boxes().substr(0, 10), "corrected|") << "what has been read is not read again";
    EXPECT_EQ(window->readidcard() + IdCardReader(nullptr, this).readsscard(), -1);

    const QSignalSpy closed(window.get(), &IdCardReader::setuiclose);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_EQ(closed.size(), 1);
    EXPECT_FALSE(window->isVisible());
    CardWatch other(nullptr); // ticks as the window's own does, and reads nothing
    const QSignalSpy ready(&other, &CardWatch::cardReady);
    lay(0);
    other.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ready.size() >= 3; }, 60000)) << "a closed window has read it";
    EXPECT_EQ(boxes().substr(0, 10), "corrected|");
    other.stop();
    window.reset();
    expectRoomForWords([] { return std::make_unique<IdCardReader>(nullptr, nullptr); });
}

// The window of identity cards over the virtual desk's reader.
#include "IdCardReader.h"

#include "Dialogs.h"
#include "DiskFullAt.h"
#include "Part.h"
#include "TempDir.h"
#include "Words.h"
#include "hidcard.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

const std::string texts =
    "name = \"NAME\"; other_name = \"OTHER\"; gender = \"2\"; nation = \"01\"; birth = \"19870654\"; "
    "address = \"ADDRESS\"; number = \"NUMBER\"; authority = \"AUTHORITY\"; from = \"FROM\"; "
    "to = \"TO\"; pass_number = \"PASS\"; issues = \"ISSUES\"; version = \"VERSION\"; "
    "category = \"CATEGORY\"; ";
const std::string header = "姓名,性别,民族,出生,住址,公民身份号码,签发机关,有效期限\r\n";
const std::string row = "NAME,女,汉族,19870654,ADDRESS,NUMBER,AUTHORITY,FROM-TO\r\n";

class IdCard : public ::testing::Test
{
protected:
    IdCard()
    {
        fs::create_directory(folder.file("cards"));
        fs::create_directory(folder.file("tmp"));
        setenv("TMPDIR", folder.file("tmp").c_str(), 1);
        setenv("LUMRO_DESK", folder.write("desk.cfg", "idcard = { cards = \"cards\"; };").c_str(), 1);
        Dialogs::instance().information =
            [this](QWidget*, const QString& title, const QString& text, QMessageBox::StandardButtons) {
                told << title << text;
                return QMessageBox::Ok;
            };
    }
    ~IdCard() override
    {
        h_idcard_closeDevice();
        Dialogs::instance() = Dialogs::real();
        unsetenv("TMPDIR");
        unsetenv("LUMRO_DESK");
    }
    void lay(int type, const std::string& more = texts, Qt::GlobalColor colour = Qt::red)
    {
        QImage face(102, 126, QImage::Format_RGB888);
        face.fill(colour);
        face.save(QString::fromStdString(folder.file("cards/face.png")));
        const std::string text = "type = " + std::to_string(type) + "; picture = \"face.png\"; " + more;
        fs::rename(folder.write("cards/new", text), folder.file("cards/" + std::to_string(++laid) + ".cfg"));
        fs::last_write_time(folder.file("cards/" + std::to_string(laid) + ".cfg"),
                            start + std::chrono::seconds(laid));
    }
    void show() { window = std::make_unique<IdCardReader>(nullptr, nullptr); }
    void read(int type, const std::string& more = texts, Qt::GlobalColor colour = Qt::red)
    {
        if (!window)
            show();
        lay(type, more, colour);
        part<QPushButton>(*window, "buttonRead")->click();
    }
    std::string box(const char* name) const { return part<QLineEdit>(*window, name)->text().toStdString(); }
    std::string all() const
    {
        std::string all;
        for (const char* name : {"editName",
                                 "editGender",
                                 "editNation",
                                 "editYear",
                                 "editMonth",
                                 "editDay",
                                 "editAddress",
                                 "editNumber",
                                 "editDepartment",
                                 "editPeriod"})
            all += box(name) + "|";
        return all;
    }
    QColor photo() const
    {
        const QPixmap shown = part<QLabel>(*window, "labelPhoto")->pixmap(Qt::ReturnByValue);
        return shown.isNull() ? QColor() : shown.toImage().pixelColor(50, 60);
    }
    /// By the button, which writes to the path that was set. @return what is said of it on standard error
    std::string save(const std::string& name)
    {
        window->SetCardPath(QString::fromStdString(folder.file(name)));
        ::testing::internal::CaptureStderr();
        part<QPushButton>(*window, "buttonSave")->click();
        return ::testing::internal::GetCapturedStderr();
    }
    std::string note() const { return part<QLabel>(*window, "labelNote")->text().toStdString(); }
    unsigned modeOf(const std::string& name) const
    {
        struct stat entry
        {
        };
        EXPECT_EQ(lstat(folder.file(name).c_str(), &entry), 0) << name;
        return entry.st_mode & 0777;
    }

    const TempDir folder;
    const fs::file_time_type start = fs::file_time_type::clock::now() - std::chrono::hours(1);
    int laid = 0;
    QStringList told;
    std::unique_ptr<IdCardReader> window;
};

} // namespace

TEST_F(IdCard, EachTypeHasItsPlaces)
{
    read(0);
    EXPECT_EQ(all(), "NAME|女|汉族|1987|06|54|ADDRESS|NUMBER|AUTHORITY|FROM-TO|");
    EXPECT_EQ(photo(), Qt::red);
    read(1, "gender = \"1\"; birth = \"20011231\"; authority = \"there\";", Qt::blue);
    EXPECT_EQ(all(), "|男|汉族|2001|12|31|||there|-|") << "the nation stays";
    EXPECT_EQ(photo(), Qt::blue) << "not the face of the person before";
    read(2);
    EXPECT_EQ(all(), "NAME|女|01|1987|06|54|OTHER|NUMBER|AUTHORITY|FROM-TO|");
    read(3);
    const std::string third = "NAME|女|AUTHORITY|1987|06|54|ADDRESS|NUMBER|AUTHORITY|FROM-TO|";
    EXPECT_EQ(all(), third);
    read(4, "name = \"nobody\";");
    EXPECT_EQ(all(), third);
    fs::remove_all(folder.file("cards"));
    fs::create_directory(folder.file("cards"));
    part<QPushButton>(*window, "buttonRead")->click();
    EXPECT_EQ(all(), third) << "no card";
    window->clearinfos();
    EXPECT_EQ(all() + box("editPath"), "||||||||||");
    EXPECT_FALSE(photo().isValid());
    EXPECT_EQ(told, QStringList());

    ReadZktCard card;
    EXPECT_LT(card.readhycardinfo(), 0);
    EXPECT_EQ(card.gethycardinfo().size(), 0);
    for (const auto& [type, size] : {std::pair(0, 10), {1, 11}, {2, 12}, {3, 14}, {4, 0}}) {
        lay(type);
        EXPECT_EQ(card.readhycardinfo(), type);
        EXPECT_EQ(card.gethycardinfo().size(), size);
        EXPECT_EQ(card.gethycardinfo().value(size - 1),
                  type < 4 ? QDir::tempPath() + QStringLiteral("/elphoto.bmp") : QString());
    }
    EXPECT_EQ(card.readhycard(), 4);
}

TEST_F(IdCard, SavingAddsARowAndThePortrait)
{
    read(0);
    EXPECT_EQ(save("new/deep/cardinfo.cvs"), "\"" + folder.file("new/deep/cardinfo.cvs") + "\"\n");
    EXPECT_EQ(note(), "The card has been saved.");
    EXPECT_EQ(folder.content("new/deep/cardinfo.cvs"), header + row);
    save("new/deep/cardinfo.cvs");
    EXPECT_EQ(folder.content("new/deep/cardinfo.cvs"), header + row + row);
    EXPECT_EQ(modeOf("new"), 0700U);
    EXPECT_EQ(modeOf("new/deep"), 0700U);
    EXPECT_EQ(modeOf("new/deep/cardinfo.cvs"), 0600U);
    EXPECT_EQ(modeOf("new/deep/NUMBER.jpg"), 0600U);
    EXPECT_EQ(modeOf("tmp/elphoto.bmp"), 0600U);
    EXPECT_EQ(folder.content("new/deep/NUMBER.jpg").substr(0, 2), "\xFF\xD8");

    read(0, texts, Qt::blue);
    folder.write("empty", "");
    folder.write("NUMBER.jpg", "an earlier one");
    save("empty");
    EXPECT_EQ(folder.content("empty"), row) << "a file that is there gets no header";
    EXPECT_GT(QImage(QString::fromStdString(folder.file("NUMBER.jpg"))).pixelColor(50, 60).blue(), 240);
    read(0,
         "name = \"a,b\"; address = \"%6%8\"; number = \"1\"; birth = \"\"; to = \"长期\"; gender = \"9\";");
    save("empty");
    EXPECT_EQ(folder.content("empty"), row + "a,b,未说明的性别,,,1-长期,1,,-长期\r\n")
        << "as the places are filled in turn";

    const auto before = folder.names();
    for (const char* missing : {"address = \"there\";", "name = \"somebody\";"}) {
        read(0, missing);
        EXPECT_EQ(save("unwanted"), "");
    }
    read(0);
    window->writeinfo2file(QString());
    EXPECT_EQ(folder.names(), before);
}

TEST_F(IdCard, ARowIsSavedWholeOrNotAtAll)
{
    read(0);
    const auto expectRefusal = [this](const char* name, const char* why) {
        const std::string said = save(name);
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 2) << said; // the path, and the reason
        EXPECT_NE(said.find(why), std::string::npos) << said;
        EXPECT_EQ(said.find("NUMBER"), std::string::npos) << said;
        EXPECT_EQ(note(), "The card could not be saved. Please check the file.");
    };
    expectRefusal("cards", "Is a directory");
    EXPECT_EQ(modeOf("NUMBER.jpg"), 0600U) << "the portrait counts by itself";
    fs::remove(folder.file("NUMBER.jpg"));
    ASSERT_EQ(mkfifo(folder.file("fifo").c_str(), 0600), 0);
    expectRefusal("fifo", "cannot write");
    fs::create_symlink("nowhere", folder.file("link"));
    expectRefusal("link", "cannot write");
    const std::string earlier(5000, 'x');
    folder.write("full", earlier);
    part<QLabel>(*window, "labelPhoto")->clear();
    {
        const DiskFullAt limit(5000 + 20);
        expectRefusal("full", "No space left");
    }
    EXPECT_EQ(folder.content("full"), earlier);
    {
        const DiskFullAt limit(100);
        window->writeinfo2file(QString::fromStdString(folder.file("fresh")));
    }
    EXPECT_FALSE(fs::exists(folder.file("fresh")));
    const int other = open(folder.file("full").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    expectRefusal("full", "busy");
    close(other);
    EXPECT_EQ(folder.content("full"), earlier);
    save("full");
    EXPECT_EQ(folder.content("full"), earlier + row);
    read(0, "name = \"a\"; address = \"b\"; number = \"../outside\";");
    save("cards/info");
    EXPECT_EQ(note(), "The portrait could not be saved.");
    EXPECT_FALSE(fs::exists(folder.file("outside.jpg")));
}

TEST_F(IdCard, ItFollowsTheReaderWhileItIsOpen)
{
    fs::rename(folder.file("cards"), folder.file("away"));
    show();
    EXPECT_EQ(told, (QStringList{QStringLiteral("Error"), QStringLiteral("Init IDCard failed!")}));
    const auto says = [this](const char* text) {
        return QTest::qWaitFor(
            [=] { return part<QLabel>(*window, "labelState")->text() == QLatin1String(text); }, 20000);
    };
    window->show();
    EXPECT_TRUE(says("No card reader is attached."));
    for (const char* hidden : {"buttonBrowse", "buttonStop", "buttonRead2"})
        EXPECT_FALSE(part<QPushButton>(*window, hidden)->isVisible());
    fs::rename(folder.file("away"), folder.file("cards"));
    EXPECT_TRUE(says("Please lay a card on the reader."));
    lay(0);
    EXPECT_TRUE(says("The card has been read. Please lay on the next one."));
    EXPECT_EQ(box("editName"), "NAME");
    part<QLineEdit>(*window, "editName")->setText(QStringLiteral("corrected"));
    lay(1, "nonsense = 1;");
    EXPECT_TRUE(says("The card could not be read. Please lift it and lay it on again."));
    EXPECT_EQ(box("editName"), "corrected") << "a card that has been read is not read again";
    EXPECT_EQ(window->readidcard(), -1);
    EXPECT_EQ(IdCardReader(nullptr, this).readsscard(), 0);

    QSignalSpy closed(window.get(), &IdCardReader::setuiclose);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_EQ(closed.size(), 1);
    EXPECT_FALSE(window->isVisible());
    window.reset();
    EXPECT_EQ(fs::exists(folder.file("tmp/elphoto.bmp")), false);
    expectRoomForWords([] { return std::make_unique<IdCardReader>(nullptr, nullptr); });
}

// The receipt printer's window, to the byte, at the other end of a pseudo-terminal.
#include "PrinterWidget.h"

#include "../ui/AnsweredDialogs.h"
#include "Command.h"
#include "Job.h"
#include "PictureBytes.h"
#include "PrinterNode.h"
#include "ReceiptPaper.h"
#include "TempDir.h"

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>

#include <fcntl.h>

namespace {

const QByteArray feed3 = "1b6403";

class PrinterWindow : public ::testing::Test
{
protected:
    PrinterWindow()
    {
        Dialogs::instance().ask = [this](QMessageBox& box) {
            answers_.messages << box.windowTitle() + QLatin1Char('|') + box.text();
            EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
            EXPECT_EQ(box.parent(), nullptr);
            return QMessageBox::Ok;
        };
        Dialogs::instance().askText = [this](QInputDialog& dialog) {
            EXPECT_EQ(dialog.labelText(), QStringLiteral("Text: "));
            asked_ = dialog.windowTitle() + QLatin1Char(' ') + dialog.textValue();
            return typed_;
        };
        Dialogs::instance().chooseFiles = [this](QFileDialog& dialog) {
            EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
            EXPECT_THAT(dialog.nameFilters().join(u' ').toStdString(), ::testing::HasSubstr("*.bmp"));
            return answers_.chosenFiles;
        };
    }
    template <class Control> Control& find(const char* name)
    {
        return *window_->findChild<Control*>(QLatin1String(name));
    }
    void click(const char* name) { find<QAbstractButton>(name).click(); }
    QString status() { return find<QLabel>("labelStatus").text(); }
    void type(const QString& text) { find<QPlainTextEdit>("editText").setPlainText(text); }
    void connectPrinter()
    {
        if (!node_)
            node_ = std::make_unique<PrinterNode>(file("lp0"));
        fcntl(node_->descriptor(), F_SETFL, O_NONBLOCK);
        click("buttonScanDevices");
        click("buttonOpenDevice");
        ASSERT_EQ(status(), QStringLiteral("设备已连接!!!"));
    }
    /// All that comes out until the orders are done.
    QByteArray printed()
    {
        QByteArray bytes;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                const bool isDone = !window_->isPrinting();
                char part[5000];
                for (ssize_t got = 0; node_ && (got = read(node_->descriptor(), part, sizeof part)) > 0;)
                    bytes.append(part, int(got));
                return isDone;
            },
            60000));
        return bytes;
    }
    QByteArray printedHex() { return printed().toHex(); }
    QString file(const char* name) const { return QString::fromStdString(folder_.file(name)); }
    void choose(const QImage& picture)
    {
        ASSERT_TRUE(picture.save(file("picture"), "PNG"));
        answers_.chosenFiles = QStringList{file("picture")};
    }
    /// The lines of the picture that was printed, in hexadecimal digits.
    QVector<QByteArray> rows(const QByteArray& bytes)
    {
        constexpr int head = 8, lineBytes = 48;
        EXPECT_EQ(bytes.left(6).toHex(), "1d7630003000");
        EXPECT_EQ(bytes.right(3).toHex(), feed3);
        const int height = uchar(bytes[6]) | uchar(bytes[7]) << 8;
        EXPECT_EQ(bytes.size(), head + height * lineBytes + 3);
        QVector<QByteArray> result;
        for (int y = 0; y < height; ++y)
            result << bytes.mid(head + y * lineBytes, lineBytes).toHex();
        return result;
    }

    const TempDir folder_;
    AnsweredDialogs answers_;
    QString typed_, asked_;
    std::unique_ptr<PrinterNode> node_;
    std::unique_ptr<PrinterWidget> window_ = std::make_unique<PrinterWidget>(
        QStringList{QStringLiteral("/nowhere"), QString::fromStdString(folder_.path())});
};

QImage filled(int width, int height, const QColor& colour)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

TEST_F(PrinterWindow, FindsOpensAndClosesADevice)
{
    const auto canOpen = [this] { // and scan
        return find<QWidget>("buttonScanDevices").isEnabled() + find<QWidget>("buttonOpenDevice").isEnabled();
    };
    EXPECT_EQ(window_->objectName(), QStringLiteral("printer"));
    EXPECT_EQ(status(), QStringLiteral("设备未连接..."));
    click("buttonOpenDevice"); // nothing in the list
    EXPECT_EQ(status(), QStringLiteral("设备链接失败，请检查设备接口..."));
    EXPECT_EQ(canOpen(), 2);
    const PrinterNode other(file("lp1"));
    QObject::connect(window_.get(), &PrinterWidget::aboutToScan, [this] { // one that gets ready for it
        if (!node_)
            node_ = std::make_unique<PrinterNode>(file("lp0"));
    });
    click("buttonScanDevices");
    auto& devices = find<QComboBox>("comboDevices");
    QStringList found{devices.itemText(0), devices.itemText(1)};
    found.sort();
    EXPECT_EQ(found, (QStringList{file("lp0"), file("lp1")}));
    devices.setCurrentText(file("lp0"));
    connectPrinter(); // scans again
    EXPECT_EQ(devices.count(), 4);
    EXPECT_EQ(canOpen(), 0);
    click("buttonCloseDevice");
    EXPECT_EQ(status(), QStringLiteral("设备未连接..."));
    EXPECT_EQ(canOpen(), 2);
    click("checkBold");
    printed();
    EXPECT_TRUE(answers_.messages.isEmpty()) << "nothing was to be printed yet";
    click("buttonText");
    printed();
    EXPECT_EQ(answers_.messages, QStringList(QStringLiteral("Warning|Write failed")));

    window_->show();
    for (const char* part : {"buttonSkin", "buttonMinimize", "buttonMaximize"})
        EXPECT_FALSE(find<QWidget>(part).isVisible()) << part;
    const QSignalSpy ends(qApp, &QGuiApplication::lastWindowClosed);
    QTimer::singleShot(0, qApp, [this] { // told while the program runs only
        click("buttonClose");
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QCoreApplication::exec();
    EXPECT_EQ(ends.count(), 0) << "the program does not end with it";
    EXPECT_FALSE(window_->isVisible());
}

TEST_F(PrinterWindow, EveryControlSendsItsBytes)
{
    connectPrinter();
    for (const int size : {7, 3, 0})
        find<QComboBox>("comboSize").setCurrentIndex(size);
    EXPECT_EQ(printedHex(), "1d21771d21331d2100");
    const std::pair<const char*, QByteArray> styles[] = {{"checkBold", "1b45"},
                                                         {"checkWhiteOnBlack", "1d42"},
                                                         {"checkUpsideDown", "1b7b"},
                                                         {"checkTurned", "1b56"}};
    for (const auto& [name, command] : styles) {
        click(name);
        EXPECT_EQ(printedHex(), command + "01");
        click(name);
        EXPECT_EQ(printedHex(), command + "00");
    }
    type(QStringLiteral("a票\n😀") + QChar(0) + QLatin1Char('c'));
    click("buttonText");
    EXPECT_EQ(printedHex(), "1c261b390161e7a5a80af09f98801b6402");

    QString barcode = QStringLiteral("{B12345678"), qrCode = QStringLiteral("12345678"); // are proposed
    for (const int length : {5, 300}) {
        typed_ = QString(length - 3, QLatin1Char('x')) + QStringLiteral("é1");
        const QByteArray low = QByteArray::number(length + 256, 16).right(2), hex = typed_.toUtf8().toHex();
        click("buttonBarcode");
        EXPECT_EQ(asked_, QStringLiteral("PrintBarcode ") + barcode);
        EXPECT_EQ(printedHex(), "1d77021d683c1d66001d48021d6b49" + low + hex + feed3);
        barcode = typed_;
        typed_.prepend(QLatin1Char('q'));
        const QByteArray qrHex = typed_.toUtf8().toHex(),
                         qrLow = QByteArray::number(length + 257, 16).right(2);
        click("buttonQrCode");
        EXPECT_EQ(asked_, QStringLiteral("PrintQRCode ") + qrCode);
        qrCode = typed_;
        EXPECT_EQ(printedHex(), "1d77081d6b610001" + qrLow + (length > 254 ? "01" : "00") + qrHex + feed3);
    }
    typed_.clear(); // cancelled
    for (const char* name : {"buttonBarcode", "buttonQrCode", "buttonPicture"})
        click(name);
    EXPECT_EQ(printed(), "");
}

TEST_F(PrinterWindow, PicturesComeOutBlackOnWhiteAsWideAsThePaper)
{
    connectPrinter();
    const QByteArray white(96, '0'), black(96, 'f');
    const auto print = [&](const QImage& picture) {
        choose(picture);
        click("buttonPicture");
        return rows(printed());
    };
    QImage stripes = filled(768, 100, Qt::white);
    QPainter(&stripes).fillRect(0, 50, 384, 50, Qt::black);
    EXPECT_EQ(print(stripes),
              QVector<QByteArray>(25, white) +
                  QVector<QByteArray>(25, QByteArray(48, 'f') + QByteArray(48, '0')));
    for (const QImage::Format format : {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_RGB888})
        EXPECT_EQ(print(filled(384, 2, Qt::black).convertToFormat(format)), QVector<QByteArray>(2, black));
    QImage negative(384, 1, QImage::Format_Mono);
    negative.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    negative.fill(0);
    EXPECT_EQ(print(negative), QVector<QByteArray>(1, black)) << "0 means black in this file";
    EXPECT_EQ(print(filled(384, 2, Qt::transparent)), QVector<QByteArray>(2, white));
    EXPECT_EQ(print(filled(1, 1, Qt::black)), QVector<QByteArray>(384, black));
    EXPECT_EQ(print(filled(1000, 1, Qt::black)).size(), 1);
    EXPECT_EQ(print(filled(100, 33, Qt::black)).size(), 126) << "126.72";
    EXPECT_EQ(print(filled(384, 20000, Qt::black)), QVector<QByteArray>(20000, black));
    QImage lying = filled(96, 48, Qt::white);
    QPainter(&lying).fillRect(0, 0, 48, 48, Qt::black); // its left half
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    ASSERT_TRUE(lying.save(&buffer, "JPG", 100));
    const mirvak::Bytes turned = withOrientation({jpeg.begin(), jpeg.end()}, 6);
    folder_.write("picture", std::string(turned.begin(), turned.end()));
    click("buttonPicture");
    const QVector<QByteArray> upright = rows(printed());
    ASSERT_EQ(upright.size(), 768);
    EXPECT_EQ(upright[100], black) << "its upper half, as the camera was held";
    EXPECT_EQ(upright[668], white);
    QByteArray grey;
    for (const QByteArray& row : print(filled(384, 8, Qt::gray)))
        grey += row;
    EXPECT_GT(grey.count('0'), 0);
    EXPECT_LT(grey.count('0'), grey.size() / 2);

    choose(filled(1, 171, Qt::black)); // would be 65664 lines
    click("buttonPicture");
    EXPECT_EQ(printed(), "");
    choose(QImage(384, 65536, QImage::Format_Mono));
    click("buttonPicture");
    EXPECT_EQ(printed(), "") << "one line too many";
    EXPECT_EQ(answers_.messages.size(), 2);
    EXPECT_EQ(answers_.messages.removeDuplicates(), 1);
    folder_.write("picture", "no picture");
    click("buttonPicture");
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(answers_.messages.size(), 2);
    EXPECT_EQ(answers_.messages.removeDuplicates(), 0);
}

TEST_F(PrinterWindow, APrinterThatTakesNothingIsGivenUpAtOnceAndOnePulledOutIsTold)
{
    connectPrinter();
    window_->show();
    choose(filled(384, 2000, Qt::black));
    const auto printTwice = [this] {
        click("buttonPicture");
        click("buttonPicture"); // waits for the first
        EXPECT_TRUE(QTest::qWaitFor([&] { return find<QWidget>("buttonCancelJob").isVisible(); }, 60000));
    };
    for (const char* const cancel : {"buttonCancelJob", "buttonCloseDevice"}) {
        printTwice();
        click(cancel); // the printer has not looked at any byte
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window_->isPrinting(); }, 60000));
        EXPECT_LT(printed().size(), 48 * 2000);
    }
    EXPECT_TRUE(answers_.messages.isEmpty());
    click("buttonOpenDevice");
    printTwice();
    node_.reset();
    printed();
    EXPECT_EQ(answers_.messages.size(), 2) << "one for each";
    click("buttonCloseDevice");
    connectPrinter();
    click("buttonPicture");
    EXPECT_EQ(rows(printed()).size(), 2000) << "plugged in again";
    click("buttonPicture");
    window_.reset(); // while it waits for the printer
}

TEST_F(PrinterWindow, AnOrderTellsHowMuchOfAllItsPartsHasGoneOut)
{
    connectPrinter();
    PrinterLink link;
    ASSERT_TRUE(link.open(QFile::encodeName(file("lp0"))));
    std::shared_ptr<Job> job;
    QObject::connect(&link, &PrinterLink::began, [&](const std::shared_ptr<Job>& begun) { job = begun; });
    link.send([] { return PrintOrder().command("one").data(QByteArray(50000, '2')); });
    ASSERT_TRUE(job);
    QByteArray taken;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            taken += printed();
            return !link.isBusy();
        },
        60000));
    EXPECT_EQ(job->progress(), 1);
    EXPECT_EQ(taken + printed(), "one" + QByteArray(50000, '2'));
}

TEST_F(PrinterWindow, ThePaperShowsWhatWasPrintedAndReadersReadIt)
{
    connectPrinter();
    ReceiptPaper paper;
    const auto print = [&](const char* button) {
        click(button);
        const QByteArray bytes = printed();
        for (int i = 0; i < bytes.size(); ++i)
            paper.print(bytes.mid(i, 1));
    };
    const auto end = [&](int high, int blank) { // of the paper, above so many blank lines
        return paper.image().copy(40, paper.image().height() - 40 - blank - high, 384, high);
    };
    const auto ink = [&](int high, int blank) {
        const QImage part = end(high, blank);
        return std::count(part.constBits(), part.constBits() + part.sizeInBytes(), 0);
    };
    type(QStringLiteral("L票"));
    print("buttonText");
    const auto plain = ink(24, 66);
    const QImage line = end(24, 66);
    const auto printStyled = [&](const char* style) {
        click(style);
        print("buttonText");
        click(style);
        return ink(24, 66);
    };
    EXPECT_GT(printStyled("checkBold"), plain);
    EXPECT_EQ(printStyled("checkWhiteOnBlack"), 36 * 24 - plain);
    EXPECT_EQ(printStyled("checkUpsideDown"), plain);
    EXPECT_EQ(end(24, 66), line.mirrored(true, true));
    find<QComboBox>("comboSize").setCurrentIndex(1);
    print("buttonText");
    EXPECT_EQ(ink(48, 66), 4 * plain);
    typed_ = QStringLiteral("{BShelf 42");
    print("buttonBarcode");
    typed_ = QStringLiteral("票 №7");
    print("buttonQrCode");
    choose(filled(384, 40, Qt::black));
    print("buttonPicture");
    EXPECT_EQ(ink(40, 90), 384 * 40);
    ASSERT_TRUE(paper.image().save(file("paper.png")));
    const std::string read = tools::run("zbarimg -q --raw '" + folder_.file("paper.png") + "'");
    EXPECT_THAT(read, ::testing::HasSubstr("Shelf 42\n"));
    EXPECT_THAT(read, ::testing::HasSubstr("票 №7\n"));
}

} // namespace

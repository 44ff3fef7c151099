// The receipt printer on the kernel's own driver for USB printers; the printer is the kernel's gadget.
#include "Command.h"
#include "PrintCommands.h"
#include "PrinterLink.h"
#include "waitFor.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <thread>

namespace {

constexpr const char* gadget = "/sys/kernel/config/usb_gadget/printer/UDC";
constexpr int longMs = 60000;

class UsbPrinter : public ::testing::Test
{
protected:
    UsbPrinter()
    {
        QObject::connect(&link_, &PrinterLink::ended, [this](PrintResult result) { results_ << result; });
        plug();
    }
    ~UsbPrinter() override { unplug(); }

    void plug()
    {
        std::ofstream(gadget) << "dummy_udc.0" << std::flush;
        EXPECT_TRUE(
            waitFor([this] { return (printer_ = open("/dev/g_printer0", O_RDWR | O_NONBLOCK)) >= 0; }));
        EXPECT_TRUE(waitFor([] { return about().find("CURRENT_TAGS") != std::string::npos; }));
    }
    /// The controller in software does not take up the same connection again.
    void unplug()
    {
        std::ofstream("/sys/class/udc/dummy_udc.0/soft_connect") << "disconnect" << std::flush;
        EXPECT_TRUE(waitFor([] { return access("/dev/usb/lp0", F_OK) != 0; }));
        close(printer_);
        std::ofstream(gadget) << std::endl;
    }
    static std::string about() { return tools::run("udevadm info -q property -n /dev/usb/lp0"); }
    /// Adds what has come to the printer, in whole requests: the gadget loses its place in pieces of one.
    bool take(QByteArray& bytes) const
    {
        static char part[65536];
        const ssize_t count = read(printer_, part, sizeof part);
        bytes.append(part, int(std::max<ssize_t>(count, 0)));
        return count > 0;
    }
    void expectPrinted(const PrintOrder& order)
    {
        QByteArray expected, bytes;
        for (const PrintOrder::Step& step : order.steps)
            expected += step.bytes;
        link_.send([=] { return order; });
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return !take(bytes) && bytes.size() >= expected.size() && !link_.isBusy(); }, longMs));
        EXPECT_TRUE(bytes == expected) << bytes.size() << " of " << expected.size();
        EXPECT_EQ(results_.takeLast(), PrintResult::Sent);
    }

    int printer_ = -1;
    PrinterLink link_;
    QVector<PrintResult> results_;
};

TEST_F(UsbPrinter, IsGivenToTheUserAtTheScreenAloneAndTellsItsStatus)
{
    struct stat node = {};
    ASSERT_EQ(stat("/dev/usb/lp0", &node), 0);
    EXPECT_EQ(node.st_mode & 07, 0U);
    EXPECT_NE(about().find(":uaccess:"), std::string::npos);
    NZUsbIO_linux stream(4096, 64);
    ASSERT_TRUE(stream.Open("/dev/usb/lp0"));
    const std::uint8_t command[] = {0x10, 0x04, 0x01};
    QByteArray asked;
    std::thread device([&] { waitFor([&] { return take(asked) && write(printer_, "\x12", 1) == 1; }); });
    EXPECT_EQ(stream.QueryOneByteStatus(command, 3, longMs), 0x12);
    device.join();
    EXPECT_EQ(asked.left(3).toHex(), "100401");
}

TEST_F(UsbPrinter, GetsAllInOrderAlsoAfterTheCableWasPulledInAPicture)
{
    ASSERT_TRUE(link_.open("/dev/usb/lp0"));
    expectPrinted(printCommands::text(QString(5000, QChar(0x7968))));
    expectPrinted(printCommands::barcode(QStringLiteral("42")));
    expectPrinted(printCommands::qrCode(QStringLiteral("42")));

    const QTemporaryDir folder;
    QImage noise(384, 6000, QImage::Format_Mono);
    for (int i = 0; i < noise.sizeInBytes(); ++i)
        noise.bits()[i] = uchar(i * 7919 >> 5);
    ASSERT_TRUE(noise.save(folder.filePath(QStringLiteral("picture.bmp"))));
    const PrintOrder picture = printCommands::picture(folder.filePath(QStringLiteral("picture.bmp")));
    link_.send([=] { return picture; });
    QByteArray begin;
    ASSERT_TRUE(waitFor([&] { return take(begin) && begin.size() > 10000; }));
    unplug();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !link_.isBusy(); }, longMs));
    EXPECT_EQ(results_, QVector<PrintResult>{PrintResult::Failed});
    link_.close();
    plug();
    ASSERT_TRUE(link_.open("/dev/usb/lp0"));
    expectPrinted(picture);
}

} // namespace

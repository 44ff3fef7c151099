#include "PrinterControl.h"

#include "CaptureDesk.h"
#include "ComeForward.h"
#include "DeskPrinter.h"
#include "PrinterWidget.h"

PrinterControl::PrinterControl(CaptureDesk& desk) : desk_(desk) {}

PrinterControl::~PrinterControl() = default;

void PrinterControl::onPrint()
{
    if (!desk_.mayCapture())
        return;
    if (!window_)
        makeWindow();
    comeForward(*window_);
}

void PrinterControl::makeWindow()
{
    QStringList folders{QStringLiteral("/dev/usb")};
    deskPrinter_ = DeskPrinter::fromEnvironment();
    if (deskPrinter_)
        folders << deskPrinter_->folder();
    window_ = std::make_unique<PrinterWidget>(folders);
    if (deskPrinter_)
        QObject::connect(
            window_.get(), &PrinterWidget::aboutToScan, [this] { deskPrinter_->waitUntilReady(); });
}

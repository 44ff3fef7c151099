#pragma once

#include <memory>

class CaptureDesk;
class DeskPrinter;
class PrinterWidget;

/// The button of the receipt printer and its window. GUI thread only.
class PrinterControl
{
public:
    /// `desk` is borrowed for the life of this object.
    explicit PrinterControl(CaptureDesk& desk);
    ~PrinterControl();

    /// Shows the window. It is made once, and stays with what was typed and connected in it.
    void onPrint();

private:
    void makeWindow();

    CaptureDesk& desk_;
    std::unique_ptr<DeskPrinter> deskPrinter_; ///< null without one
    std::unique_ptr<PrinterWidget> window_;    ///< null until it is wanted
};

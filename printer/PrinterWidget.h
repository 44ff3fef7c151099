#pragma once

#include "PrinterLink.h"

#include <QStringList>
#include <QWidget>

#include <memory>

class Ui_PrinterWidget;

/// The window of the receipt printer: finds it, opens it, prints texts, codes and pictures. Its own texts are
/// Chinese in every language. Closing hides it; what is being printed goes on, and the printer stays open.
/// GUI thread only.
class PrinterWidget : public QWidget
{
    Q_OBJECT

public:
    /// @param folders where printers' device files are, in the order in which they are listed
    explicit PrinterWidget(QStringList folders = {QStringLiteral("/dev/usb")}, QWidget* parent = nullptr);
    ~PrinterWidget() override;

    /// Whether an order is on its way to the printer.
    bool isPrinting() const { return link_.isBusy(); }

Q_SIGNALS:
    void aboutToScan(); ///< the folders are about to be listed

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void makeTitleBar();
    void connectButtons();
    void connectStyles();
    void scanDevices();
    void openDevice();
    void closeDevice();
    void refresh();
    void printText();
    void printBarcode();
    void printQrCode();
    void printPicture();
    void tell(PrintResult result);

    const QStringList folders_;
    std::unique_ptr<Ui_PrinterWidget> ui_;
    QString barcode_, qrCode_; ///< what was printed last
    PrinterLink link_;
};

#include "PrinterWidget.h"

#include "Dialogs.h"
#include "JobBar.h"
#include "Look.h"
#include "NZUsbIOEnumerator_linux.h"
#include "PrintCommands.h"

#include "ui_PrinterWidget.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>

#include <array>

namespace {

constexpr std::size_t listBytes = 1000;

/// The paths of the printers in a folder, as far as the list has room.
QStringList printersIn(const QString& folder)
{
    std::array<char, listBytes> list{};
    NZUsbIOEnumerator_linux printers(QFile::encodeName(folder).toStdString());
    const int count = printers.Enumerate(list.data(), list.size(), nullptr);
    QStringList paths;
    const char* path = list.data();
    for (int i = 0; i < count; ++i, path += qstrlen(path) + 1)
        paths << QString::fromLocal8Bit(path);
    return paths;
}

/// Empty when the user cancels.
QString askForText(const QString& title, const QString& proposal)
{
    QInputDialog dialog;
    dialog.setObjectName(title);
    dialog.setWindowTitle(title);
    dialog.setLabelText(QStringLiteral("Text: "));
    dialog.setTextValue(proposal);
    return Dialogs::instance().askText(dialog);
}

} // namespace

PrinterWidget::PrinterWidget(QStringList folders, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), folders_(std::move(folders)),
      ui_(std::make_unique<Ui_PrinterWidget>()),
      // The code set that this kind of barcode begins with on many printers.
      barcode_(QStringLiteral("{B12345678")), qrCode_(QStringLiteral("12345678"))
{
    ui_->setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false); // the program ends with its main window, whatever is open
    Look::dress(*ui_->frameBody);
    makeTitleBar();
    connectButtons();
    connectStyles();
    connect(&link_, &PrinterLink::began, this, [this](const std::shared_ptr<Job>& job) {
        ui_->jobBar->follow(tr("Printing..."), job);
    });
    connect(&link_, &PrinterLink::ended, this, &PrinterWidget::tell);
    refresh();
}

PrinterWidget::~PrinterWidget() = default;

void PrinterWidget::makeTitleBar()
{
    ui_->titleBar->SetTitle(windowTitle());
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    ui_->titleBar->ShowMaximizeButton(false);
    ui_->titleBar->EnableWindowMove(true);
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &QWidget::close);
}

void PrinterWidget::connectButtons()
{
    using Handler = void (PrinterWidget::*)();
    const std::pair<QPushButton*, Handler> table[] = {
        {ui_->buttonScanDevices, &PrinterWidget::scanDevices},
        {ui_->buttonOpenDevice, &PrinterWidget::openDevice},
        {ui_->buttonCloseDevice, &PrinterWidget::closeDevice},
        {ui_->buttonText, &PrinterWidget::printText},
        {ui_->buttonBarcode, &PrinterWidget::printBarcode},
        {ui_->buttonQrCode, &PrinterWidget::printQrCode},
        {ui_->buttonPicture, &PrinterWidget::printPicture},
    };
    for (const auto& [button, handler] : table)
        connect(button, &QPushButton::clicked, this, handler);
}

void PrinterWidget::connectStyles()
{
    connect(ui_->comboSize, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int n) {
        link_.send([n] { return printCommands::letterSize(n); });
    });
    using Command = PrintOrder (*)(bool);
    const std::pair<QCheckBox*, Command> table[] = {
        {ui_->checkBold, printCommands::bold},
        {ui_->checkTurned, printCommands::turned},
        {ui_->checkWhiteOnBlack, printCommands::whiteOnBlack},
        {ui_->checkUpsideDown, printCommands::upsideDown},
    };
    for (const auto& [box, command] : table)
        connect(box, &QCheckBox::toggled, this, [this, command = command](bool on) {
            link_.send([=] { return command(on); });
        });
}

void PrinterWidget::scanDevices()
{
    Q_EMIT aboutToScan();
    for (const QString& folder : folders_)
        ui_->comboDevices->addItems(printersIn(folder));
}

void PrinterWidget::openDevice()
{
    const bool isOpened = link_.open(ui_->comboDevices->currentText().toLocal8Bit());
    ui_->labelStatus->setText(isOpened ? QStringLiteral("设备已连接!!!")
                                       : QStringLiteral("设备链接失败，请检查设备接口..."));
    refresh();
}

void PrinterWidget::closeDevice()
{
    link_.close();
    ui_->labelStatus->setText(QStringLiteral("设备未连接..."));
    refresh();
}

void PrinterWidget::refresh()
{
    for (QPushButton* button : {ui_->buttonScanDevices, ui_->buttonOpenDevice})
        button->setEnabled(!link_.isOpen());
}

void PrinterWidget::printText()
{
    link_.send([text = ui_->editText->toPlainText()] { return printCommands::text(text); });
}

void PrinterWidget::printBarcode()
{
    const QString text = askForText(QStringLiteral("PrintBarcode"), barcode_);
    if (text.isEmpty())
        return;
    barcode_ = text;
    link_.send([text] { return printCommands::barcode(text); });
}

void PrinterWidget::printQrCode()
{
    const QString text = askForText(QStringLiteral("PrintQRCode"), qrCode_);
    if (text.isEmpty())
        return;
    qrCode_ = text;
    link_.send([text] { return printCommands::qrCode(text); });
}

void PrinterWidget::printPicture()
{
    QFileDialog dialog(this, tr("选择打印图片"), QDir::tempPath(), tr("Images (*.jpg *.bmp *.png)"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QString path = Dialogs::instance().chooseFiles(dialog).value(0);
    if (!path.isEmpty())
        link_.send([path] { return printCommands::picture(path); });
}

void PrinterWidget::tell(PrintResult result)
{
    switch (result) {
    case PrintResult::Sent:
    case PrintResult::Cancelled:
        return;
    case PrintResult::Unreadable:
        Dialogs::warn(this, tr("The picture cannot be read."));
        return;
    case PrintResult::TooHigh:
        Dialogs::warn(this,
                      tr("The picture is too high for its width: it would need more than 8 m of paper."));
        return;
    case PrintResult::Failed:
        QMessageBox box(
            QMessageBox::Warning, QStringLiteral("Warning"), QStringLiteral("Write failed"), QMessageBox::Ok);
        Dialogs::instance().ask(box);
    }
}

void PrinterWidget::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

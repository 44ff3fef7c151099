#include "BtnControl.h"

#include "ButtonFlow.h"
#include "FunctionButtons.h"
#include "IconButton.h"
#include "LanguageFolder.h"
#include "Look.h"
#include "Settings.h"

#include "ui_BtnControl.h"

#include <QAction>
#include <QDebug>
#include <QMouseEvent>

namespace {

constexpr int smallestCell = 60; // px; the style sheet's smallest button
constexpr int largestCell = 84;  // px; beyond it the icons would only blur

QString buttonStyle(const QString& folder1, const QString& folder2, const char* identifier)
{
    static const QString style =
        QStringLiteral("QPushButton{border-radius: 5px;min-width:60px;min-height:60px;image: "
                       "url(:/images/%1/images/%2/%3.png); }"
                       "QPushButton:hover{image: url(:/images/%1/images/%2/%3.png);"
                       "border-image: url(:/images/common/images/common/hover.png);}"
                       "QPushButton:pressed{image: url(:/images/%1/images/%2/%3.png);"
                       "border-image: url(:/images/common/images/common/pressed.png);}");
    return style.arg(folder1, folder2, QLatin1String(identifier));
}

} // namespace

BtnControl::BtnControl(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui_BtnControl>())
{
    ui_->setupUi(this);
    setWindowFlags(Qt::FramelessWindowHint);
    const QString folder = languageFolder(settings::appLanguage.read(settings_));
    SetButtonsStyle(folder, folder);

    buttons_ = {ui_->btnScanner,
                ui_->btnDocument,
                ui_->btnBarcode,
                ui_->btnPicCompose,
                ui_->btnCardCompose,
                ui_->btnRecord,
                ui_->btnAutoScanner,
                ui_->btnOcr,
                ui_->btnReadIdCard,
                ui_->btnPrint,
                ui_->btnPdf,
                ui_->btnPdfEx,
                ui_->btnSign,
                ui_->btnFingerPrint,
                ui_->btnBookscan,
                ui_->btnFace,
                ui_->btnLaohua};
    auto* flow = new ButtonFlow(this, smallestCell, largestCell);
    flow->setSpacing(1); // the default buttons fit into one row of 800 px
    flow->setContentsMargins(3, 4, 3, 4);
    for (QPushButton* button : buttons_) {
        flow->addWidget(button);
        button->hide();
    }
    flow->addWidget(ui_->btnMore);
    // A push button by itself refuses to grow in height.
    for (QPushButton* button : findChildren<QPushButton*>())
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    nameButtons();
    makePdfMenu();
    ReadButton();
    connectButtons();
}

BtnControl::~BtnControl() = default;

void BtnControl::nameButtons()
{
    for (int i = 0; i < buttons_.size(); ++i) {
        buttons_[i]->setAccessibleName(functionButtons::caption(i));
        buttons_[i]->setToolTip(functionButtons::caption(i));
    }
}

void BtnControl::makePdfMenu()
{
    const QString hint = tr("Hold down or right-click: PDF of picture files, text, PDF/A");
    ui_->btnPdf->setToolTip(ui_->btnPdf->toolTip() + QLatin1Char('\n') + hint);
    ui_->btnPdf->setAccessibleDescription(hint);
    auto* synthesize = new QAction(tr("PDF of picture files..."), this);
    connect(synthesize, &QAction::triggered, this, &BtnControl::synthesizePdfClicked);
    ui_->btnPdf->addAction(synthesize);
    auto* line = new QAction(this);
    line->setSeparator(true);
    ui_->btnPdf->addAction(line);
    addPdfChoice(tr("With text"), QStringLiteral("choicePdfText"), settings::pdfText);
    addPdfChoice(tr("PDF/A-2b"), QStringLiteral("choicePdfArchive"), settings::pdfArchive);
}

/// A switch of the settings, which other windows may change too, as an entry of the PDF button's menu.
void BtnControl::addPdfChoice(const QString& text, const QString& name, const Setting<bool>& choice)
{
    auto* entry = new QAction(text, this);
    entry->setObjectName(name);
    entry->setCheckable(true);
    connect(ui_->btnPdf, &IconButton::menuWanted, entry, [=] { entry->setChecked(choice.read()); });
    connect(entry, &QAction::triggered, this, [this, &choice](bool isOn) { choice.write(settings_, isOn); });
    ui_->btnPdf->addAction(entry);
}

void BtnControl::connectButtons()
{
    connect(ui_->btnMore, &QPushButton::clicked, this, &BtnControl::onMore);
    connect(ui_->btnScanner, &QPushButton::clicked, this, &BtnControl::btnScannerClicked);
    connect(ui_->btnDocument, &QPushButton::clicked, this, &BtnControl::btnDocumentClicked);
    connect(ui_->btnBarcode, &QPushButton::clicked, this, &BtnControl::btnBarcodeClicked);
    connect(ui_->btnPicCompose, &QPushButton::clicked, this, &BtnControl::btnPicComposeClicked);
    connect(ui_->btnCardCompose, &QPushButton::clicked, this, &BtnControl::btnCardComposeClicked);
    connect(ui_->btnRecord, &QPushButton::clicked, this, &BtnControl::btnRecordClicked);
    connect(ui_->btnAutoScanner, &QPushButton::clicked, this, &BtnControl::btnAutoScannerClicked);
    connect(ui_->btnOcr, &QPushButton::clicked, this, &BtnControl::btnOcrClicked);
    connect(ui_->btnReadIdCard, &QPushButton::clicked, this, &BtnControl::btnReadIdCardClicked);
    connect(ui_->btnPrint, &QPushButton::clicked, this, &BtnControl::btnPrintClicked);
    connect(ui_->btnPdf, &QPushButton::clicked, this, &BtnControl::btnPdfClicked);
    connect(ui_->btnPdfEx, &QPushButton::clicked, this, &BtnControl::btnPdfExClicked);
    connect(ui_->btnSign, &QPushButton::clicked, this, &BtnControl::btnSignClicked);
    connect(ui_->btnFingerPrint, &QPushButton::clicked, this, &BtnControl::btnFingerPrintClicked);
    connect(ui_->btnBookscan, &QPushButton::clicked, this, &BtnControl::btnBookscanClicked);
    connect(ui_->btnFace, &QPushButton::clicked, this, &BtnControl::btnFaceClicked);
    connect(ui_->btnLaohua, &QPushButton::clicked, this, &BtnControl::btnLaohuaClicked);
    for (QPushButton* button : {ui_->btnPicCompose, ui_->btnCardCompose})
        button->installEventFilter(this);
}

/// Each click on a composition button takes one of two sides: a double click would take the same side twice.
bool BtnControl::eventFilter(QObject* watched, QEvent* event)
{
    return event->type() == QEvent::MouseButtonDblClick || QWidget::eventFilter(watched, event);
}

void BtnControl::SetButtonsStyle(const QString& folder1, const QString& folder2)
{
    const QList<QPushButton*> all = findChildren<QPushButton*>();
    for (int i = 0; i < all.size() - 1; ++i) // the last is the "more" button, which keeps its icon
        all[i]->setStyleSheet(buttonStyle(folder1, folder2, functionButtons::identifiers.at(std::size_t(i))));
}

void BtnControl::SetButtonStyle(const QString& folder1, const QString& folder2, int index)
{
    constexpr int styled = 14; // "capture" to "fingerprint"
    const QList<QPushButton*> all = findChildren<QPushButton*>();
    if (index < 0 || index >= styled || index >= all.size())
        return;
    all[index]->setStyleSheet(
        buttonStyle(folder1, folder2, functionButtons::identifiers.at(std::size_t(index))));
}

void BtnControl::WriteButton(int on, int index)
{
    const unsigned mask = unsigned(settings::buttonId.read(settings_));
    const unsigned bit = 1U << (unsigned(index) & 31U);
    settings::buttonId.write(settings_, int(on ? mask | bit : mask & ~bit));
}

void BtnControl::ReadButton()
{
    qDebug() << "btn:" << settings::buttonId.read(settings_);
    for (int i = 0; i < buttons_.size(); ++i) {
        if (functionButtons::defaultMask >> i & 1) {
            buttons_[i]->show();
            ++visibleCount_;
        }
    }
}

void BtnControl::onMore()
{
    Q_EMIT btnMoreClicked();
}

void BtnControl::onDisplayMoreCheck(int index, int state)
{
    if (index < 0 || index >= buttons_.size() || (state != Qt::Checked && state != Qt::Unchecked))
        return;
    const bool show = state == Qt::Checked;
    buttons_[index]->setVisible(show);
    WriteButton(show ? 1 : 0, index);
    visibleCount_ += show ? 1 : -1;
}

void BtnControl::onDisplayCheckBox(int, bool) {}

void BtnControl::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

void BtnControl::mouseMoveEvent(QMouseEvent*) {}

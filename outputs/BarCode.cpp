#include "BarCode.h"

#include "Look.h"

#include "ui_BarCode.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

namespace {

const QString buttonStyle = QStringLiteral("background-color: rgb(8, 115, 140);\ncolor: rgb(255, 255, 255);");

} // namespace

BarCode::BarCode()
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      ui_(std::make_unique<Ui_BarCode>())
{
    ui_->setupUi(this);
    setFixedSize(size());
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_QuitOnClose, false); // the program ends with its main window, whatever is open
    setAccessibleName(tr("Codes"));
    Look::dress(*ui_->frameBody);
    for (QPushButton* button : {ui_->buttonCopy, ui_->buttonClose})
        button->setStyleSheet(buttonStyle);
    ui_->titleBar->SetTitle(tr("Codes"));
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    ui_->titleBar->ShowMaximizeButton(false);
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &QWidget::close);
    connect(ui_->buttonClose, &QPushButton::clicked, this, &QWidget::close);
    connect(ui_->buttonCopy, &QPushButton::clicked, this, &BarCode::copy);
    connect(ui_->editCode, &QLineEdit::returnPressed, this, &BarCode::copy);
    const QRect area = screen()->geometry();
    move(area.topLeft() + QPoint((area.width() - width()) / 2, (area.height() - height()) / 2));
}

BarCode::~BarCode() = default;

void BarCode::SetCodeData(const QString& text)
{
    ui_->editCode->setText(text);
    ui_->editCode->setCursorPosition(0); // a long line shows its beginning
    ui_->buttonCopy->setFocus();
}

void BarCode::copy()
{
    QGuiApplication::clipboard()->setText(ui_->editCode->text());
}

void BarCode::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

void BarCode::keyPressEvent(QKeyEvent* event)
{
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        close();
    else if (isEnter && button)
        button->click();
    else
        QWidget::keyPressEvent(event);
}

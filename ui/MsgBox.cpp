#include "MsgBox.h"

#include "Look.h"
#include "TextFit.h"

#include "ui_MsgBox.h"

#include <QApplication>
#include <QScreen>

#include <algorithm>

namespace {

constexpr int narrowest = 320; // px
constexpr int widest = 520;    // px, unless a single word needs more
constexpr int lowest = 72;     // px of the message

} // namespace

MsgBox::MsgBox(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), ui_(std::make_unique<Ui_MsgBox>())
{
    ui_->setupUi(this);
    ui_->frameBody->setStyleSheet(
        QStringLiteral("QFrame#frameBody { border: 1px solid rgb(107, 176, 205); }"
                       "QLabel#labelTitle { background-color: rgb(25, 90, 100); font-weight: bold; }"));
    Look::dress(*ui_->frameBody);
    layout()->setSizeConstraint(QLayout::SetFixedSize); // the box follows its text
    for (const QPushButton* button : {ui_->buttonOk, ui_->buttonOkSecond})
        connect(button, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
}

MsgBox::~MsgBox() = default;

void MsgBox::Warnning(const QString& text)
{
    fill(tr("warnning"), text);
}

void MsgBox::Error(const QString& text)
{
    fill(tr("error"), text);
}

void MsgBox::Information(const QString& title, const QString& text)
{
    fill(title.isEmpty() ? tr("warnning") : title, text.isEmpty() ? tr("warnning") : text);
}

void MsgBox::Question(const QString& text)
{
    fill(tr("Question"), text);
    ui_->buttonCancel->setVisible(true);
    ui_->buttonCancel->setDefault(true); // what loses nothing lies nearest
    ui_->buttonCancel->setFocus();
    fitMessage();
}

void MsgBox::fill(const QString& title, const QString& text)
{
    ui_->labelTitle->setText(title);
    ui_->labelMessage->setText(text);
    setAccessibleName(title);
    setAccessibleDescription(text); // read out when the box opens
    ui_->buttonOk->setVisible(false);
    ui_->buttonCancel->setVisible(false);
    ui_->buttonOkSecond->setDefault(true);
    ui_->buttonOkSecond->setFocus();
    fitMessage();
}

void MsgBox::fitMessage()
{
    ensurePolished();
    const QFontMetrics metrics = ui_->labelMessage->fontMetrics();
    const int frame = 2 * ui_->labelMessage->margin() + 4;
    const QString text = ui_->labelMessage->text();
    const int natural = metrics.boundingRect(QRect(), Qt::AlignLeft, text).width() + frame;
    const int screen = QGuiApplication::primaryScreen()->availableSize().width() * 9 / 10;
    const int word = std::min(TextFit::longestWord(text, metrics) + frame, screen);
    const int width = std::max(std::clamp(natural, narrowest, widest), word);
    ui_->labelMessage->setMinimumHeight(0); // or the height for a width would never be less than the last one
    ui_->labelMessage->setFixedWidth(width);
    ui_->labelMessage->setMinimumHeight(std::max(lowest, ui_->labelMessage->heightForWidth(width)));
    ui_->layoutBody->activate(); // now, not with the next events: the placement needs the size
    layout()->activate();
}

void MsgBox::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    QWidget* largest = this;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->width() > largest->width())
            largest = window;
    }
    // The largest window's own position is left out: it is the main window, which fills the screen.
    move((largest->width() - 1 - width()) / 2, (largest->height() - 1 - height()) / 2);
}

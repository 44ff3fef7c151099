#include "IdCardReader.h"

#include "Base64.h"
#include "CardInfoFile.h"
#include "CardLayout.h"
#include "CardWatch.h"
#include "Dialogs.h"
#include "Look.h"

#include "ui_IdCardReader.h"

#include <QCloseEvent>
#include <QDebug>
#include <QFileDialog>

IdCardReader::IdCardReader(QWidget* parent, void* device)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), ui_(std::make_unique<Ui_IdCardReader>()),
      device_(device), watch_(new CardWatch(this))
{
    ui_->setupUi(this);
    setAccessibleName(tr("ID Card Reader"));
    Look::dress(*ui_->frameButtons);
    ui_->titleBar->SetTitle(tr("ID Card Reader"));
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMaximizeButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    ui_->titleBar->EnableWindowMove(false);
    for (QPushButton* button : {ui_->buttonBrowse, ui_->buttonStop, ui_->buttonRead2})
        button->hide();
    openReader();
    connectControls();
}

IdCardReader::~IdCardReader() = default;

void IdCardReader::openReader()
{
    if (card_.inithycard() != 0)
        Dialogs::instance().information(this, tr("Error"), tr("Init IDCard failed!"), QMessageBox::Ok);
}

void IdCardReader::connectControls()
{
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &QWidget::close);
    connect(ui_->buttonRead, &QPushButton::clicked, this, &IdCardReader::readidcard_hy);
    connect(ui_->buttonSave, &QPushButton::clicked, this, [this] { writeinfo2file(cardPath_); });
    connect(ui_->buttonBrowse, &QPushButton::clicked, this, &IdCardReader::browse);
    connect(watch_, &CardWatch::stateChanged, this, &IdCardReader::showState);
    connect(watch_, &CardWatch::cardReady, this, &IdCardReader::readidcard_hy);
}

void IdCardReader::SetCardPath(const QString& path)
{
    cardPath_ = path;
    ui_->editPath->setText(path);
}

void IdCardReader::browse()
{
    QFileDialog dialog(this, tr("Please select the save path"), cardPath_);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    const QStringList chosen = Dialogs::instance().chooseFiles(dialog);
    if (!chosen.isEmpty())
        SetCardPath(chosen.first());
}

void IdCardReader::readidcard_hy()
{
    ui_->labelState->setText(tr("Reading the card ..."));
    ui_->labelState->repaint(); // nothing is painted while the reader is waited for
    const CardLayout* layout = cardLayout(card_.readhycardinfo());
    if (layout)
        fill(*layout, card_.gethycardinfo());
    showState();
}

void IdCardReader::fill(const CardLayout& layout, const QStringList& texts)
{
    const QString& birth = texts[layout.birth];
    ui_->editName->setText(texts[layout.name]);
    ui_->editGender->setText(texts[layout.gender]);
    if (layout.nation >= 0)
        ui_->editNation->setText(texts[layout.nation]);
    ui_->editYear->setText(birth.left(4));
    ui_->editMonth->setText(birth.mid(4, 2));
    ui_->editDay->setText(birth.right(2));
    ui_->editAddress->setText(texts[layout.address]);
    ui_->editNumber->setText(texts[layout.number]);
    ui_->editDepartment->setText(texts[layout.department]);
    ui_->editPeriod->setText(texts[layout.from] + QLatin1Char('-') + texts[layout.to]);
    ui_->labelPhoto->setPixmap(portrait_.load(texts[layout.texts]));
    ui_->labelNote->clear();
    for (QLineEdit* edit : findChildren<QLineEdit*>())
        edit->setCursorPosition(0); // a long text shows its begin
    hasShownCard_ = true;
}

void IdCardReader::showState()
{
    ui_->labelState->setText(stateText());
}

QString IdCardReader::stateText() const
{
    switch (watch_->state()) {
    case CardWatch::State::none:
        return tr("No card reader is attached.");
    case CardWatch::State::reading:
        return tr("Reading the card ...");
    case CardWatch::State::unreadable:
        return tr("The card could not be read. Please lift it and lay it on again.");
    case CardWatch::State::ready: // and has been fetched
    case CardWatch::State::looking:
        return hasShownCard_ ? tr("The card has been read. Please lay on the next one.")
                             : tr("Please lay a card on the reader.");
    case CardWatch::State::unknown:
        break;
    }
    return tr("Please lay a card on the reader and press \"Read\".");
}

void IdCardReader::clearinfos()
{
    for (QLineEdit* edit : findChildren<QLineEdit*>())
        edit->clear();
    ui_->labelPhoto->clear();
}

/// Field by field, as the file's readers expect it: a text that holds a place's number is filled in by a
/// later one.
QString IdCardReader::row() const
{
    return QStringLiteral("%1,%2,%3,%4,%5,%6,%7,%8\r\n")
        .arg(ui_->editName->text())
        .arg(ui_->editGender->text())
        .arg(ui_->editNation->text())
        .arg(ui_->editYear->text() + ui_->editMonth->text() + ui_->editDay->text())
        .arg(ui_->editAddress->text())
        .arg(ui_->editNumber->text())
        .arg(ui_->editDepartment->text())
        .arg(ui_->editPeriod->text());
}

void IdCardReader::writeinfo2file(const QString& path)
{
    if (ui_->editAddress->text().isEmpty() || ui_->editName->text().isEmpty() || path.isEmpty())
        return;
    qDebug() << path;
    const CardInfoFile file(path);
    const bool isSaved = file.append(row());
    const QPixmap portrait = ui_->labelPhoto->pixmap(Qt::ReturnByValue);
    const bool isPortraitSaved = portrait.isNull() || file.savePortrait(portrait, ui_->editNumber->text());
    if (isSaved && isPortraitSaved)
        ui_->labelNote->setText(tr("The card has been saved."));
    else
        ui_->labelNote->setText(isSaved ? tr("The portrait could not be saved.")
                                        : tr("The card could not be saved. Please check the file."));
}

void IdCardReader::cardsplit(char* buf, char sep, char** parts, int& count)
{
    constexpr char carriageReturn = 13;
    count = 0;
    char* piece = buf;
    for (char* at = buf; *at != '\0'; ++at) {
        const bool isEnd = *at == carriageReturn;
        if (!isEnd && *at != sep)
            continue;
        *at = '\0';
        parts[count++] = piece;
        piece = at + 1;
        if (isEnd)
            return;
    }
    if (*piece != '\0')
        parts[count++] = piece;
}

std::string IdCardReader::EncodeBase64(const char* data, int length)
{
    return base64::encode(data, length);
}

std::string IdCardReader::DecodeBase64(const char* data, int length, int& outLength)
{
    return base64::decode(data, length, outLength);
}

void IdCardReader::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    watch_->start();
    showState();
}

void IdCardReader::hideEvent(QHideEvent* event)
{
    watch_->stop();
    QDialog::hideEvent(event);
}

void IdCardReader::closeEvent(QCloseEvent* event)
{
    event->accept();
    Q_EMIT setuiclose();
}

void IdCardReader::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

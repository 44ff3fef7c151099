#include "ControlPanel.h"

#include "ControlRow.h"
#include "IconButton.h"
#include "Look.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int none = -1;

} // namespace

ControlPanel::ControlPanel(QWidget* view) : QWidget(view)
{
    setObjectName(QStringLiteral("ControlPanel"));
    setAccessibleName(tr("Camera controls"));
    setAttribute(Qt::WA_StyledBackground);
    setAttribute(Qt::WA_NoMousePropagation); // the preview below would pan, zoom and focus
    setCursor(Qt::ArrowCursor);
    setStyleSheet(
        QStringLiteral("QWidget#ControlPanel { background-color: rgba(8, 115, 140, 240); border: 1px solid "
                       "rgb(107, 176, 205); }"
                       "QLabel { color: rgb(255, 255, 255); background: transparent; }"
                       "QLabel:disabled { color: rgba(255, 255, 255, 130); }"
                       "QScrollArea, QWidget#controlRows { background: transparent; border: none; }"));
    auto* body = new QWidget(this);
    auto* around = new QVBoxLayout(this);
    around->setContentsMargins(1, 1, 1, 1);
    around->addWidget(body);
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(11, 7, 3, 9);
    layout->setSpacing(6);
    auto* scroll = new QScrollArea(body);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(head_ = makeHead());
    scroll->setWidget(rows_ = makeRows());
    layout->addWidget(scroll, 1);
    layout->addWidget(foot_ = makeFoot());
    Look::dress(*body);
    hide();
}

QWidget* ControlPanel::makeHead()
{
    auto* head = new QWidget(this);
    auto* layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 5, 0);
    auto* title = new QLabel(tr("Camera controls"), head);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    close_ = new IconButton(head);
    close_->setObjectName(QStringLiteral("buttonCloseControls"));
    close_->setAccessibleName(tr("Close"));
    close_->setToolTip(tr("Close"));
    close_->setIcon(QIcon(QStringLiteral(":/images/common/images/common/close.png")));
    close_->setFixedSize(28, 28);
    close_->setStyleSheet(QStringLiteral("QPushButton { border: none; background: transparent; padding: 0; }"
                                         "QPushButton:hover { background-color: rgb(200, 60, 50); }"));
    layout->addWidget(title, 1);
    layout->addWidget(close_);
    connect(close_, &QPushButton::clicked, this, &ControlPanel::closeWanted);
    return head;
}

QWidget* ControlPanel::makeRows()
{
    struct Entry
    {
        int automatic, control;
        const char* key;
        QString name;
    };
    const Entry table[] = {
        {MIRVAK_FOCUS_AUTO, MIRVAK_FOCUS, "Focus", tr("Focus")},
        {MIRVAK_EXPOSURE_AUTO, MIRVAK_EXPOSURE_TIME, "Exposure", tr("Exposure")},
        {none, MIRVAK_GAIN, "Gain", tr("Gain")},
        {MIRVAK_WHITE_BALANCE_AUTO, MIRVAK_WHITE_BALANCE, "WhiteBalance", tr("White balance")},
        {none, MIRVAK_BRIGHTNESS, "Brightness", tr("Brightness")},
        {none, MIRVAK_CONTRAST, "Contrast", tr("Contrast")},
        {none, MIRVAK_SATURATION, "Saturation", tr("Saturation")},
        {none, MIRVAK_SHARPNESS, "Sharpness", tr("Sharpness")},
        {none, MIRVAK_BACKLIGHT, "Backlight", tr("Backlight")},
        {none, MIRVAK_ANTI_FLICKER, "AntiFlicker", tr("Anti-flicker")},
    };
    auto* rows = new QWidget(this);
    rows->setObjectName(QStringLiteral("controlRows"));
    auto* layout = new QVBoxLayout(rows);
    layout->setContentsMargins(0, 0, 9, 0);
    layout->setSpacing(2);
    note_ = new QLabel(rows);
    note_->setWordWrap(true);
    layout->addWidget(note_);
    for (const Entry& entry : table) {
        auto* row = new ControlRow(QLatin1String(entry.key), entry.name, rows);
        layout->addWidget(row);
        connect(row, &ControlRow::changed, this, &ControlPanel::changed);
        lines_ << Line{entry.automatic, entry.control, row};
    }
    layout->addStretch(1);
    return rows;
}

QWidget* ControlPanel::makeFoot()
{
    auto* foot = new QWidget(this);
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 9, 0);
    asDelivered_ = new QPushButton(tr("As delivered"), foot);
    asDelivered_->setObjectName(QStringLiteral("buttonAsDelivered"));
    asDelivered_->setToolTip(tr("Puts everything back to how the camera was delivered"));
    layout->addWidget(asDelivered_);
    connect(asDelivered_, &QPushButton::clicked, this, &ControlPanel::resetAll);
    return foot;
}

void ControlPanel::showControls(const ControlList& controls, bool isCameraOpen)
{
    for (const Line& line : lines_)
        line.row->show(findControl(controls, line.automatic), findControl(controls, line.control));
    asDelivered_->setEnabled(!controls.isEmpty());
    const bool hasFocus = findControl(controls, MIRVAK_FOCUS) || findControl(controls, MIRVAK_FOCUS_AUTO);
    if (!isCameraOpen)
        note_->setText(tr("No camera is open."));
    else if (controls.isEmpty())
        note_->setText(tr("This camera offers nothing that can be set."));
    else
        note_->setText(hasFocus ? tr("A click on the picture focuses there.") : QString());
    note_->setVisible(!note_->text().isEmpty());
    updateGeometry();
}

void ControlPanel::followInTabOrder(QWidget* before)
{
    for (QWidget* part : {head_, rows_, foot_}) {
        for (QWidget* control : part->findChildren<QWidget*>()) {
            if (control->focusPolicy() & Qt::TabFocus && control->window() == window()) { // no popup's
                QWidget::setTabOrder(before, control);
                before = control;
            }
        }
    }
}

void ControlPanel::takeKeyboard()
{
    close_->setFocus(Qt::TabFocusReason);
}

/// As tall as all of its rows.
QSize ControlPanel::sizeHint() const
{
    constexpr int edges = 2 * 1 + 7 + 9 + 2 * 6; // px, as in the layouts
    const int rows = rows_->layout()->totalHeightForWidth(fullWidth - 30);
    return {fullWidth,
            std::max(rows, rows_->sizeHint().height()) + head_->sizeHint().height() +
                foot_->sizeHint().height() + edges};
}

void ControlPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT closeWanted();
    else
        QWidget::keyPressEvent(event);
}

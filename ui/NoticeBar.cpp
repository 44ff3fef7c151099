#include "NoticeBar.h"

#include "Look.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

NoticeBar::NoticeBar(QWidget* parent, const QString& action) : QWidget(parent), label_(new QLabel(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->addWidget(label_, 1);
    label_->setWordWrap(true);
    label_->setTextFormat(Qt::PlainText); // names of files may look like markup
    if (!action.isEmpty()) {
        button_ = new QPushButton(action, this);
        layout->addWidget(button_);
        connect(button_, &QPushButton::clicked, this, [this] {
            dismiss();
            Q_EMIT pressed();
        });
    }
    Look::dress(*this);
    timer_.setObjectName(QStringLiteral("noticeTimer"));
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] {
        dismiss();
        Q_EMIT expired();
    });
    hide();
}

void NoticeBar::say(const QString& text, int milliseconds)
{
    label_->setText(text);
    timer_.start(milliseconds);
    show();
    QAccessibleEvent event(label_, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void NoticeBar::dismiss()
{
    timer_.stop();
    if (button_ && button_->hasFocus())
        parentWidget()->setFocus(); // else the keyboard would wander off to another part of the window
    hide();
    label_->clear();
}

QString NoticeBar::text() const
{
    return label_->text();
}

void NoticeBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Look::strip);
    painter.setBrush(QColor(16, 60, 68));
    painter.drawRoundedRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), 4, 4);
}

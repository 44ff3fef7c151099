#include "JobBar.h"

#include "Job.h"
#include "Look.h"

#include <QAccessible>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>

#include <chrono>

namespace {

// What is done sooner needs no bar, which would only flash.
constexpr std::chrono::milliseconds unnoticed(700);
constexpr std::chrono::milliseconds interval(100);
constexpr int steps = 1000;
constexpr int barHeight = 8;       // px
constexpr int narrowestText = 140; // px; longer ones are broken
constexpr int besideText = 400;    // px of the window for the other parts and the strip

} // namespace

JobBar::JobBar(QWidget* parent)
    : QWidget(parent), text_(new QLabel(this)), count_(new QLabel(this)), bar_(new QProgressBar(this)),
      cancel_(new QPushButton(tr("Cancel"), this))
{
    setObjectName(QStringLiteral("JobBar"));
    cancel_->setObjectName(QStringLiteral("buttonCancelJob"));
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_NoMousePropagation); // a click beside the button does not drag the picture
    text_->setWordWrap(true);
    bar_->setRange(0, steps);
    bar_->setTextVisible(false);
    bar_->setFixedHeight(barHeight);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(12, 6, 8, 6);
    layout->setHorizontalSpacing(12);
    layout->setVerticalSpacing(4);
    layout->setColumnStretch(0, 1);
    layout->addWidget(text_, 0, 0);
    layout->addWidget(count_, 0, 1, Qt::AlignBottom | Qt::AlignRight);
    layout->addWidget(bar_, 1, 0, 1, 2);
    layout->addWidget(cancel_, 0, 2, 2, 1, Qt::AlignCenter);
    Look::dress(*this);
    hide();
    patience_.setSingleShot(true);
    patience_.setInterval(unnoticed);
    watch_.setInterval(interval);
    connect(&patience_, &QTimer::timeout, this, &JobBar::appear);
    connect(&watch_, &QTimer::timeout, this, &JobBar::look);
    connect(cancel_, &QPushButton::clicked, this, &JobBar::cancel);
}

void JobBar::follow(const QString& text, const std::shared_ptr<Job>& job)
{
    job_ = job;
    text_->setText(text);
    const int room = qMax(narrowestText, (window()->width() - besideText) / 2);
    text_->setMinimumWidth(qMin(text_->fontMetrics().horizontalAdvance(text) + 2, room));
    bar_->setAccessibleName(text);
    cancel_->setAccessibleDescription(text);
    cancel_->setEnabled(true);
    look();
    patience_.start();
    watch_.start();
}

void JobBar::appear()
{
    show();
    QAccessibleEvent event(bar_, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void JobBar::look()
{
    const std::shared_ptr<Job> job = job_.lock();
    if (!job)
        return leave();
    bar_->setValue(static_cast<int>(job->progress() * steps));
    const int next = qMin(job->done() + 1, job->count());
    count_->setText(job->count() > 0 ? tr("Page %1 of %2").arg(next).arg(job->count())
                                     : tr("%1 %").arg(static_cast<int>(job->progress() * 100)));
    // The text must not dance while the digits grow.
    count_->setMinimumWidth(qMax(count_->minimumWidth(), count_->sizeHint().width()));
}

void JobBar::cancel()
{
    const std::shared_ptr<Job> job = job_.lock();
    if (!job)
        return;
    job->stop();
    text_->setText(tr("Being cancelled..."));
    if (cancel_->hasFocus())
        parentWidget()->setFocus(); // else the keyboard would wander off to another part of the window
    cancel_->setEnabled(false);
}

void JobBar::leave()
{
    patience_.stop();
    watch_.stop();
    if (cancel_->hasFocus())
        parentWidget()->setFocus();
    hide();
    Q_EMIT ended();
}

bool JobBar::event(QEvent* event)
{
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!isKey || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return QWidget::event(event);
    event->accept(); // of an override: no shortcut of the window may take it
    if (event->type() == QEvent::KeyPress)
        cancel();
    return true;
}

void JobBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Look::strip);
    painter.setBrush(QColor(16, 60, 68));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

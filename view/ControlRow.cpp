#include "ControlRow.h"

#include "ControlSlider.h"
#include "ElidedComboBox.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QSignalBlocker>

ControlRow::ControlRow(const QString& key, const QString& name, QWidget* parent)
    : QWidget(parent), name_(new QLabel(name, this)), value_(new QLabel(this)),
      automatic_(new QCheckBox(tr("Automatic"), this)), slider_(new ControlSlider(this)),
      entries_(new ElidedComboBox(this))
{
    automatic_->setObjectName(QStringLiteral("check") + key);
    slider_->setObjectName(QStringLiteral("slider") + key);
    entries_->setObjectName(QStringLiteral("combo") + key);
    value_->setObjectName(QStringLiteral("value") + key);
    automatic_->setAccessibleName(tr("%1, automatic").arg(name));
    slider_->setAccessibleName(name);
    entries_->setAccessibleName(name);
    slider_->setTracking(true);
    value_->setMinimumWidth(value_->fontMetrics().horizontalAdvance(QStringLiteral("1000.0 ms")));
    value_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 2, 0, 2);
    grid->setVerticalSpacing(0);
    grid->addWidget(name_, 0, 0);
    grid->addWidget(automatic_, 0, 1);
    grid->addWidget(value_, 0, 2);
    grid->addWidget(entries_, 0, 1, 1, 2);
    grid->addWidget(slider_, 1, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    connect(automatic_, &QCheckBox::clicked, this, [this](bool on) { Q_EMIT changed(switch_.control, on); });
    connect(slider_, &QSlider::valueChanged, this, &ControlRow::choose);
    connect(slider_, &ControlSlider::resetWanted, this, &ControlRow::reset);
    connect(entries_, QOverload<int>::of(&QComboBox::activated), this, [this](int row) {
        Q_EMIT changed(control_.control, entries_->itemData(row).toInt());
    });
}

void ControlRow::show(const MirvakControlInfo* automatic, const MirvakControlInfo* control)
{
    hasSwitch_ = automatic != nullptr;
    hasControl_ = control != nullptr;
    if (automatic) {
        switch_ = *automatic;
        automatic_->setChecked(automatic->value != 0);
    }
    automatic_->setVisible(automatic);
    const bool isMenu = control && control->kind == MIRVAK_MENU;
    slider_->setVisible(control && !isMenu);
    value_->setVisible(control && !isMenu);
    entries_->setVisible(isMenu);
    if (control) {
        control_ = *control;
        isMenu ? showEntries() : showSlider();
    }
    setVisible(automatic || control);
}

void ControlRow::showSlider()
{
    const QSignalBlocker quiet(slider_);
    scale_ = ControlScale(control_);
    slider_->setRange(0, scale_.last());
    slider_->setPageStep(std::max(1, scale_.last() / 10));
    if (control_.isHeld && slider_->hasFocus())
        automatic_->setFocus(Qt::OtherFocusReason); // it would go to another row
    slider_->setEnabled(!control_.isHeld);
    slider_->setToolTip(tr("Double click or Delete: as delivered (%1)").arg(textOf(control_.standard)));
    value_->setEnabled(!control_.isHeld);
    // A hand that holds it is not contradicted, and several positions may stand for one value.
    if (slider_->isSliderDown())
        return;
    if (scale_.valueAt(slider_->value()) != control_.value)
        slider_->setValue(scale_.positionOf(control_.value));
    value_->setText(textOf(control_.value));
}

void ControlRow::showEntries()
{
    const QString names[] = {tr("Off"), tr("50 Hz"), tr("60 Hz"), tr("Automatic")};
    if (entries_->count() == 0) {
        for (int value = 0; value < 4; ++value) {
            if (control_.entries & 1 << value)
                entries_->addItem(names[value], value);
        }
    }
    entries_->setCurrentIndex(entries_->findData(control_.value));
    entries_->setEnabled(!control_.isHeld);
}

void ControlRow::choose(int position)
{
    control_.value = scale_.valueAt(position);
    value_->setText(textOf(control_.value));
    Q_EMIT changed(control_.control, control_.value);
}

void ControlRow::reset()
{
    if (hasControl_ && !control_.isHeld)
        Q_EMIT changed(control_.control, control_.standard);
    if (hasSwitch_ && switch_.value != switch_.standard)
        Q_EMIT changed(switch_.control, switch_.standard);
}

void ControlRow::mouseDoubleClickEvent(QMouseEvent*)
{
    reset();
}

QString ControlRow::textOf(int value) const
{
    if (control_.control == MIRVAK_EXPOSURE_TIME)
        return tr("%1 ms").arg(QLocale().toString(value / 10.0, 'f', 1));
    if (control_.control == MIRVAK_WHITE_BALANCE)
        return tr("%1 K").arg(value);
    return QString::number(value);
}

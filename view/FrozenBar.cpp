#include "FrozenBar.h"

#include "Anchor.h"
#include "Look.h"
#include "ViewOverlay.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

FrozenBar::FrozenBar(QWidget& view)
    : QWidget(&view), save_(new QPushButton(tr("Save the frozen picture"), this))
{
    setObjectName(QStringLiteral("FrozenBar"));
    save_->setObjectName(QStringLiteral("buttonSaveFrozen"));
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_NoMousePropagation); // a click beside the button does not drag the picture
    auto* text = new QLabel(tr("Frozen. Captures save the live page."), this);
    text->setWordWrap(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 5, 10, 5);
    layout->addWidget(text, 1);
    layout->addWidget(save_);
    Look::dress(*this);
    hide();
    new Anchor(*this, Qt::AlignTop | Qt::AlignLeft);
    connect(save_, &QPushButton::clicked, this, &FrozenBar::saveClicked);
}

void FrozenBar::offerSaving(bool offered)
{
    save_->setVisible(offered);
}

void FrozenBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    overlay::drawBox(painter, rect());
}

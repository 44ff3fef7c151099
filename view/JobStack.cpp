#include "JobStack.h"

#include "Anchor.h"
#include "JobBar.h"

#include <QVBoxLayout>

namespace {

constexpr int aboveNotice = 62; // px; a line for the user may stand below

} // namespace

JobStack::JobStack(QWidget& view) : QWidget(&view)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    setAttribute(Qt::WA_NoMousePropagation);
    new Anchor(*this, Qt::AlignBottom | Qt::AlignHCenter, {10, Anchor::belowTools, 10, aboveNotice});
    setFocusProxy(&view);
    show(); // without bars it has no size
}

void JobStack::follow(const QString& text, const std::shared_ptr<Job>& job)
{
    auto* bar = new JobBar(this);
    layout()->addWidget(bar);
    bar->follow(text, job);
    raise();
    connect(bar, &JobBar::ended, bar, &QObject::deleteLater);
}

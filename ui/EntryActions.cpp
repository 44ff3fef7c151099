#include "EntryActions.h"

#include "CropDialog.h"
#include "EntryBar.h"
#include "EntryName.h"
#include "PictureEdits.h"
#include "ThumbnailList.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

EntryActions::EntryActions(ThumbnailList& list, ListedFiles& files, QWidget& strip)
    : QObject(&strip), list_(list), strip_(strip), edits_(new PictureEdits(list, files, this)),
      bar_(new EntryBar(list.viewport())), name_(new EntryName(list.viewport()))
{
    list.viewport()->installEventFilter(this);
    connect(list.verticalScrollBar(), &QScrollBar::valueChanged, this, &EntryActions::place);
    connect(
        list.model(), &QAbstractItemModel::rowsInserted, this, &EntryActions::place, Qt::QueuedConnection);
    connect(list.model(), &QAbstractItemModel::rowsRemoved, this, &EntryActions::place, Qt::QueuedConnection);
    connect(&list, &QListWidget::currentRowChanged, this, &EntryActions::place, Qt::QueuedConnection);
    connect(edits_, &PictureEdits::noticed, this, &EntryActions::noticed);
    connect(edits_, &PictureEdits::changed, this, &EntryActions::place);
    connectBar();
    connectName();
}

EntryActions::~EntryActions() = default;

void EntryActions::connectBar()
{
    connect(bar_, &EntryBar::chosen, this, [this](EntryBar::Action action) {
        const QString path = over_;
        switch (action) {
        case EntryBar::rename:
            return rename(path);
        case EntryBar::turnLeft:
            return turn({path}, -1);
        case EntryBar::turnRight:
            return turn({path}, 1);
        case EntryBar::crop:
            return crop(path);
        case EntryBar::straighten:
            return straighten({path});
        case EntryBar::undo:
            return edits_->undo(path);
        }
    });
}

void EntryActions::connectName()
{
    connect(name_, &EntryName::named, this, [this](const QString& path, const QString& name) {
        if (!edits_->rename(path, name))
            return name_->refuse();
        name_->end();
        Q_EMIT edited();
    });
    connect(name_, &EntryName::ended, this, [this] {
        strip_.setFocus();
        place();
    });
}

QString EntryActions::current() const
{
    return list_.pathAt(list_.currentRow());
}

/// The selected ones when the current one is among them, as the user sees it.
QStringList EntryActions::chosen() const
{
    const QStringList selected = list_.selectedPaths();
    return selected.contains(current()) ? selected : QStringList{current()};
}

bool EntryActions::canEdit(const QString& path) const
{
    return PictureEdits::isPicture(path) && list_.isEnabled();
}

bool EntryActions::press(const QKeyEvent& key)
{
    isByKey_ = true;
    const bool isPlain = !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (list_.currentRow() < 0 || !isPlain)
        return false;
    switch (key.key()) {
    case Qt::Key_F2:
        rename(current());
        return true;
    case Qt::Key_R:
        turn(chosen(), key.modifiers() & Qt::ShiftModifier ? -1 : 1);
        return true;
    case Qt::Key_C:
        crop(current());
        return true;
    case Qt::Key_S:
        straighten(chosen());
        return true;
    default:
        return false;
    }
}

bool EntryActions::undo()
{
    bool isAny = false;
    for (const QString& path : chosen()) {
        isAny = isAny || edits_->canUndo(path);
        edits_->undo(path);
    }
    return isAny;
}

void EntryActions::forget(const QString& path)
{
    edits_->forget(path);
    if (name_->path() == path)
        name_->end();
}

void EntryActions::rename(const QString& path)
{
    const int row = list_.rowOfExactly(path);
    if (row < 0 || edits_->isBusy(path))
        return;
    list_.scrollToItem(list_.item(row));
    const QRect entry = list_.visualItemRect(list_.item(row));
    const int height = name_->sizeHint().height();
    name_->begin(path, QRect(entry.left() + 4, entry.bottom() - height - 2, entry.width() - 8, height));
    place();
}

void EntryActions::turn(const QStringList& paths, int quarters)
{
    for (const QString& path : paths)
        if (canEdit(path))
            edits_->turn(path, quarters);
    Q_EMIT edited();
}

void EntryActions::straighten(const QStringList& paths)
{
    for (const QString& path : paths)
        if (canEdit(path))
            edits_->straighten(path);
    Q_EMIT edited();
}

void EntryActions::crop(const QString& path)
{
    if (!canEdit(path) || edits_->isBusy(path))
        return;
    auto* dialog = new CropDialog(path, strip_.window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, path, dialog] {
        edits_->cut(path, dialog->corners());
        Q_EMIT edited();
    });
    dialog->open();
}

/// The field for a name stays with its entry, the bar with the mouse or the keyboard.
void EntryActions::place()
{
    if (!name_->path().isEmpty()) {
        const QRect entry = list_.visualItemRect(list_.item(list_.rowOfExactly(name_->path())));
        name_->move(entry.left() + 4, entry.bottom() - name_->height() - 2);
    }
    const QString keyed = strip_.hasFocus() ? current() : QString();
    over_ = isByKey_ && !keyed.isEmpty() ? keyed : list_.rowOfExactly(under_) >= 0 ? under_ : keyed;
    const int row = list_.rowOfExactly(over_);
    bar_->setVisible(row >= 0 && name_->path().isEmpty() && list_.isEnabled());
    if (row < 0)
        return;
    bar_->offer(PictureEdits::isPicture(over_), edits_->canUndo(over_));
    const QRect entry = list_.visualItemRect(list_.item(row));
    const QSize size = bar_->sizeHint();
    const int left = entry.left() + (entry.width() - size.width()) / 2;
    bar_->move(std::max(0, std::min(left, list_.viewport()->width() - size.width())), entry.top() + 2);
    bar_->raise();
}

bool EntryActions::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress: {
        const QString path = list_.pathAt(list_.row(list_.itemAt(static_cast<QMouseEvent*>(event)->pos())));
        if (path == under_ && !isByKey_)
            break;
        under_ = path;
        isByKey_ = false;
        place();
        break;
    }
    case QEvent::Leave:
        under_.clear();
        place();
        break;
    case QEvent::Resize:
        place();
        break;
    default:
        break;
    }
    return false;
}

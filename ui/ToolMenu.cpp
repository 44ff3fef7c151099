#include "ToolMenu.h"

#include <QAbstractButton>
#include <QActionGroup>
#include <QComboBox>
#include <QMenu>

namespace {

void addButton(QMenu& menu, QAbstractButton& button)
{
    QAction* entry = menu.addAction(button.icon(), button.accessibleName());
    entry->setToolTip(button.toolTip());
    entry->setEnabled(button.isEnabled());
    entry->setCheckable(button.isCheckable());
    entry->setChecked(button.isChecked());
    QObject::connect(entry, &QAction::triggered, &button, &QAbstractButton::click);
}

void addChooser(QMenu& menu, QComboBox& chooser)
{
    QMenu* list = menu.addMenu(chooser.accessibleName());
    list->menuAction()->setToolTip(chooser.toolTip());
    list->setEnabled(chooser.isEnabled() && chooser.count() > 0);
    auto* choice = new QActionGroup(list);
    for (int row = 0; row < chooser.count(); ++row) {
        QAction* entry = list->addAction(chooser.itemText(row));
        entry->setCheckable(true);
        entry->setActionGroup(choice);
        entry->setChecked(row == chooser.currentIndex());
        QObject::connect(entry, &QAction::triggered, &chooser, [&chooser, row] {
            chooser.setCurrentIndex(row);
            Q_EMIT chooser.activated(row);
        });
    }
}

} // namespace

void toolMenu::fill(QMenu& menu, const QVector<QWidget*>& tools)
{
    menu.clear();
    for (QMenu* list : menu.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly))
        list->deleteLater();
    for (QWidget* tool : tools) {
        if (auto* button = qobject_cast<QAbstractButton*>(tool))
            addButton(menu, *button);
        else if (auto* chooser = qobject_cast<QComboBox*>(tool))
            addChooser(menu, *chooser);
    }
}

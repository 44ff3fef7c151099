#pragma once

#include "ConfigSettings.h"

#include <QWidget>

#include <memory>

class QLineEdit;
class Ui_SetShortcut;

/// The page of the keyboard shortcuts. Only that of the single capture can be changed here. GUI thread only.
class SetShortcut : public QWidget
{
    Q_OBJECT

public:
    explicit SetShortcut(QWidget* parent = nullptr);
    ~SetShortcut() override;

Q_SIGNALS:
    /// A combination was changed and is stored.
    void shortcutschanged();

private:
    void markUnusable();
    static QString takenText(const QString& name, const QStringList& texts, int index, const QString& owner);

    ConfigSettings settings_;
    std::unique_ptr<Ui_SetShortcut> ui_;
};

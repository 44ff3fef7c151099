#pragma once

#include "ConfigSettings.h"

#include <QWidget>

#include <memory>

class Ui_SetGlobal;

/// The page of file names, folders, colour processing and language. GUI thread only.
class SetGlobal : public QWidget
{
    Q_OBJECT

public:
    explicit SetGlobal(QWidget* parent = nullptr);
    ~SetGlobal() override;

    /// True for 1 to 128 characters without \ / : * ? " < > | that are not one single space.
    static bool IsCorrectFileName(const QString& name);

Q_SIGNALS:
    void languageitemchanged(int row); ///< stored already; takes effect at the next start

protected:
    void showEvent(QShowEvent* event) override;

private:
    void loadPrefix();
    void loadChoices();
    void loadLanguage();
    void onPrefixChanged(const QString& text);
    void showCleaned(const QString& text);

    ConfigSettings settings_;
    std::unique_ptr<Ui_SetGlobal> ui_;
};

#pragma once

#include "ConfigSettings.h"

#include <QWidget>

#include <memory>

class Ui_SetAutoPage;

/// The page of continuous shooting: by page change or by the clock. GUI thread only.
class SetAutoPage : public QWidget
{
    Q_OBJECT

public:
    explicit SetAutoPage(QWidget* parent = nullptr);
    ~SetAutoPage() override;

private:
    void loadMode();
    void loadDelay();

    ConfigSettings settings_;
    std::unique_ptr<Ui_SetAutoPage> ui_;
};

#pragma once

#include "ConfigSettings.h"

#include <QObject>

class IdCardReader;
class MainDesk;
class QWidget;

/// The window of identity cards: made when it is asked for, gone when it is closed. GUI thread only.
class CardControl : public QObject
{
    Q_OBJECT

public:
    /// `desk` is borrowed; the window belongs to `window`.
    CardControl(MainDesk& desk, QWidget& window) : desk_(desk), window_(window) {}

    void onReadIdCard();

private:
    void makeReader();
    void dropReader();

    MainDesk& desk_;
    QWidget& window_;
    ConfigSettings settings_;
    IdCardReader* reader_ = nullptr;
};

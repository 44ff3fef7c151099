#pragma once

#include <QWidget>

#include <memory>

class Ui_SetAbout;

/// The page that names the program and its version. GUI thread only.
class SetAbout : public QWidget
{
    Q_OBJECT

public:
    explicit SetAbout(QWidget* parent = nullptr);
    ~SetAbout() override;

private:
    std::unique_ptr<Ui_SetAbout> ui_;
};

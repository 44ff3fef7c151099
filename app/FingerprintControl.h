#pragma once

#include <QObject>

#include <memory>

class FignerPrint;
class MainDesk;
class Thumbnail;

/// The fingerprint dialog of the main window, made when it is first wanted and kept. GUI thread only.
class FingerprintControl : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed.
    FingerprintControl(MainDesk& desk, Thumbnail& strip);
    ~FingerprintControl() override;

    void onFingerPrint();

private:
    MainDesk& desk_;
    Thumbnail& strip_;
    std::unique_ptr<FignerPrint> dialog_;
};

#pragma once

#include <QDialog>
#include <QTimer>

#include <memory>

class QLabel;
class Ui_AutoScan;

/// Shown while pictures are taken one after the other, by the clock or page by page: how many, how long to
/// the next one, and the button that ends it. Modal to its parent's window; stands at that window's lower
/// edge, over the buttons that it blocks anyway, so that the page stays in sight. The contents are made on
/// first use, so that the start of the program does not wait for them. GUI thread only.
///
/// The close button and Escape do what "Stop" does: the timers end, the count goes back to 0, the dialog
/// hides and autoscanStop() is emitted. Hiding it from outside ends the timers too, without the signal.
class AutoScan : public QDialog
{
    Q_OBJECT

public:
    explicit AutoScan(QWidget* parent = nullptr);
    ~AutoScan() override;

    void SetTitleName(const QString& title);
    /// Takes a picture every `seconds`, for the first time after as many. Less than 1 counts as 1 and more
    /// than 30 as 30: these are what the settings offer, but their file can hold anything, and an interval of
    /// zero would take pictures without a pause.
    void SetTimerScan(int seconds);
    /// Somebody else finds the pages and reports each by SetAutoPageNum().
    void SetAutopageScan();
    /// One more page was taken.
    void SetAutoPageNum();
    /// Timed pictures, too, count when they are reported by SetAutoPageNum(): one that could not be saved is
    /// none. Without this each timerScanReady() counts.
    void countReported() { countsReported_ = true; }

    void setVisible(bool visible) override;
    void reject() override;

Q_SIGNALS:
    /// Time for the next timed picture.
    void timerScanReady();
    /// The user ended the scan.
    void autoscanStop();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void build();
    void begin(bool byTimer);
    void halt();
    void place();
    void onInterval();
    void onSecond();
    void startCountdown();
    void showCount(int count);

    std::unique_ptr<Ui_AutoScan> ui_; ///< null until first used
    QTimer scanTimer_{this};
    QTimer tickTimer_{this};
    bool isTimerScan_ = false;
    bool countsReported_ = false;
    int count_ = 0;
    int interval_ = 0;  ///< seconds
    int remaining_ = 0; ///< seconds that the next tick shows
};

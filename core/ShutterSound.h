#pragma once

#include <QObject>
#include <QString>

class QProcess;

/// Clicks after a capture when the settings want it. A helper program plays the sound; the first click starts
/// it, once the capture is through (that takes about ten milliseconds), and all it is ever sent is a byte
/// that nobody waits for. So neither a missing sound device nor a sound server that hangs can delay a capture
/// or the start of the program. A helper that fails is given up for this run, with one line on standard
/// error. GUI thread only, except play().
class ShutterSound : public QObject
{
    Q_OBJECT

public:
    explicit ShutterSound(QObject* parent = nullptr); ///< the helper is lib/lumrosound beside the program
    explicit ShutterSound(const QString& helper, QObject* parent = nullptr);
    ~ShutterSound() override;

public Q_SLOTS:
    /// A capture was saved. Returns at once; thread-safe.
    void play();

private:
    void click();
    void start();
    void giveUp(const QString& why);

    QString helper_;
    QProcess* player_ = nullptr; ///< null until first used
    bool isGivenUp_ = false;
};

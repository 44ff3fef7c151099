#include "ShutterSound.h"

#include "Settings.h"

#include <QCoreApplication>
#include <QProcess>

#include <cstdio>

namespace {

constexpr qint64 unheardAtMost = 8; // clicks; more of them would all come at once when a server wakes up
constexpr int endMs = 1000;

} // namespace

ShutterSound::ShutterSound(QObject* parent)
    : ShutterSound(QCoreApplication::applicationDirPath() + QStringLiteral("/lib/lumrosound"), parent)
{
}

ShutterSound::ShutterSound(const QString& helper, QObject* parent) : QObject(parent), helper_(helper) {}

ShutterSound::~ShutterSound()
{
    if (!player_)
        return;
    player_->disconnect(this);
    player_->kill(); // it has nothing to lose, and may hang
    player_->waitForFinished(endMs);
}

void ShutterSound::play()
{
    if (settings::scannerSound.read())
        QMetaObject::invokeMethod(
            this, [this] { click(); }, Qt::QueuedConnection);
}

void ShutterSound::click()
{
    if (isGivenUp_)
        return;
    if (!player_ || player_->state() == QProcess::NotRunning)
        start();
    if (!isGivenUp_ && player_->isWritable() && player_->bytesToWrite() < unheardAtMost)
        player_->write("\n", 1);
}

void ShutterSound::start()
{
    if (!player_) {
        player_ = new QProcess(this);
        player_->setStandardOutputFile(QProcess::nullDevice());
        player_->setStandardErrorFile(QProcess::nullDevice());
        connect(player_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart || error == QProcess::Crashed)
                giveUp(player_->errorString());
        });
        connect(player_, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this, [this](int code) {
            if (code != 0)
                giveUp(QStringLiteral("ended with %1").arg(code));
        });
    }
    player_->start(helper_, QStringList());
}

void ShutterSound::giveUp(const QString& why)
{
    if (!isGivenUp_)
        std::fprintf(stderr, "no shutter sound: %s: %s\n", qPrintable(helper_), qPrintable(why));
    isGivenUp_ = true;
}

#include "FactoryTest.h"

#include <QCoreApplication>
#include <QDebug>
#include <QProcess>
#include <QThread>

namespace {

constexpr unsigned long pauseUs = 200; // between two starts

} // namespace

QString factoryTest::scriptFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/tools/oldtest/");
}

void factoryTest::run(const QString& folder, int cameras, int shownCamera)
{
    for (int i = 0; i < cameras; ++i) {
        if (i == shownCamera)
            continue;
        const QString command =
            QStringLiteral("%1%2%3%4")
                .arg(folder, QStringLiteral("cbx3000c"), QString::number(i), QStringLiteral(".sh"));
        // As a program without arguments, so that a folder with a blank in its name is one word.
        QProcess::startDetached(command, QStringList());
        qDebug().noquote() << "star path:" << command;
        QThread::usleep(pauseUs);
    }
}

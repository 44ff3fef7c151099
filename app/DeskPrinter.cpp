#include "DeskPrinter.h"

#include "DeskConfig.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

constexpr int momentMs = 3000, endMs = 1000;

} // namespace

std::unique_ptr<DeskPrinter> DeskPrinter::fromEnvironment()
{
    const std::filesystem::path path = DeskConfig::pathInEnvironment();
    std::string error; // the cameras' part of the program has told it
    const auto desk = path.empty() ? std::nullopt : DeskConfig::load(path, error);
    if (!desk || !desk->printer)
        return nullptr;
    return std::make_unique<DeskPrinter>(QString::fromStdString(desk->printer->paper.u8string()));
}

DeskPrinter::DeskPrinter(const QString& folder) : folder_(folder)
{
    helper_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    helper_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/lib/lumropaper"), {folder});
}

DeskPrinter::~DeskPrinter()
{
    helper_.closeWriteChannel(); // it saves what was printed, and ends
    if (helper_.state() != QProcess::NotRunning && !helper_.waitForFinished(endMs))
        helper_.kill();
}

void DeskPrinter::waitUntilReady()
{
    const bool isReady = helper_.bytesAvailable() > 0 || helper_.waitForReadyRead(momentMs);
    if (!isReady)
        std::fprintf(stderr, "virtual printer: %s\n", qPrintable(helper_.errorString()));
}

#include "PrinterNode.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <termios.h>

PrinterNode::PrinterNode(const QString& path)
    : path_(QFile::encodeName(path)), printer_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    std::array<char, 64> terminal{};
    termios settings{};
    if (grantpt(printer_.get()) != 0 || unlockpt(printer_.get()) != 0 ||
        ptsname_r(printer_.get(), terminal.data(), terminal.size()) != 0 ||
        tcgetattr(printer_.get(), &settings) != 0)
        return;
    cfmakeraw(&settings); // bytes as they are
    if (tcsetattr(printer_.get(), TCSANOW, &settings) != 0)
        return;
    if (QFileInfo(path).isSymLink())
        unlink(path_.constData());
    isNamed_ = symlink(terminal.data(), path_.constData()) == 0;
}

PrinterNode::~PrinterNode()
{
    if (isNamed_)
        unlink(path_.constData());
}

#pragma once

#include <QProcess>
#include <QString>

#include <memory>

/// The virtual desk's receipt printer: a helper program that plays one for as long as this object lives. It
/// makes a device file in its folder and leaves what is printed there as pictures. GUI thread only.
class DeskPrinter
{
public:
    /// The printer of the desk that LUMRO_DESK names; null when there is none.
    static std::unique_ptr<DeskPrinter> fromEnvironment();

    /// Starts the helper that lies in `lib` beside this program.
    explicit DeskPrinter(const QString& folder);
    ~DeskPrinter();
    DeskPrinter(const DeskPrinter&) = delete;
    DeskPrinter& operator=(const DeskPrinter&) = delete;

    const QString& folder() const { return folder_; }
    /// Until the device file is there; for a moment at most.
    void waitUntilReady();

private:
    const QString folder_;
    QProcess helper_;
};

#pragma once

#include <QString>

#include <string>

/// The fingerprint sensor's mode, the integer "fpmode" of a small configuration file. What goes wrong with
/// the file ends in mode 1 or in no change. GUI thread only.
class SensorMode
{
public:
    explicit SensorMode(const QString& file) : file_(file.toStdString()) {}
    /// "plugin.cfg" beside the program.
    static QString usualFile();

    /// 1, 2 or 3; 1 for everything else. Says on standard output what it has read, and on standard error what
    /// is wrong with the file.
    int read() const;
    /// Writes 2 for 1 and 1 for 2; the new file appears whole. False when nothing has changed.
    bool toggle() const;

private:
    std::string file_;
};

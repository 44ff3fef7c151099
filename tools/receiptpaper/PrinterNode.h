#pragma once

#include "UniqueFd.h"

#include <QString>

/// The device file of a printer that exists only as a program: one end of a pseudo-terminal, under a name of
/// one's choice. The name goes with this object.
class PrinterNode
{
public:
    /// @param path replaced when it is what another one has left
    explicit PrinterNode(const QString& path);
    ~PrinterNode();
    PrinterNode(const PrinterNode&) = delete;
    PrinterNode& operator=(const PrinterNode&) = delete;

    bool isValid() const { return isNamed_; }
    /// The printer's end.
    int descriptor() const { return printer_.get(); }

private:
    const QByteArray path_;
    mirvak::UniqueFd printer_;
    bool isNamed_ = false;
};

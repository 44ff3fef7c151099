#pragma once

#include "NZPosPrinter.h"
#include "PrintOrder.h"
#include "PrinterStream.h"
#include "Workers.h"

#include <QObject>

#include <deque>
#include <memory>

class Job;

/// The connection to one printer, and the orders for it, which go out one after the other on a thread of
/// their own: a printer that is slow or takes nothing may hold one of them for ten minutes. GUI thread only.
class PrinterLink : public QObject
{
    Q_OBJECT

public:
    explicit PrinterLink(QObject* parent = nullptr);
    ~PrinterLink() override;

    /// Cancels what is under way for another device.
    /// @param path of a device file, in the encoding of file names  @return whether it is open
    bool open(const QByteArray& path);
    /// Cancels what is under way.
    void close();
    bool isOpen() { return stream_.IsOpened(); }
    bool isBusy() const { return job_ != nullptr; }
    /// Sent when the orders before it are. Without a printer it fails.
    void send(const PrintSource& source);

Q_SIGNALS:
    /// To be shown while anybody else holds `job`. Its stop cancels this order and those that wait.
    void began(const std::shared_ptr<Job>& job);
    /// An order that prints has ended; the next one waits until this was told.
    void ended(PrintResult result);

private:
    struct Outcome
    {
        PrintResult result;
        bool isPrint;
    };

    void startNext();
    Outcome carryOut(const PrintSource& source, Job& job);
    PrintResult transfer(const PrintOrder& order, Job& job);
    void finish(const std::shared_ptr<Job>& job, const Outcome& outcome);
    void giveUp();

    PrinterStream stream_;
    NZPosPrinter printer_;
    std::deque<PrintSource> waiting_;
    std::shared_ptr<Job> job_; ///< of the order that is under way
    Workers workers_;          ///< last: its end waits for what uses the rest
};

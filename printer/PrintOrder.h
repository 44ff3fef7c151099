#pragma once

#include <QByteArray>
#include <QVector>

#include <functional>

/// How an order went.
enum class PrintResult {
    Sent,
    Failed, ///< the printer did not take the end of it
    Cancelled,
    Unreadable, ///< the picture; nothing was sent
    TooHigh     ///< the picture; nothing was sent
};

/// Bytes for the printer in the order in which they go out.
struct PrintOrder
{
    enum class Kind {
        Command,
        Data ///< may take as long as the paper needs
    };
    struct Step
    {
        Kind kind;
        QByteArray bytes;
    };

    PrintResult problem = PrintResult::Sent; ///< found before anything is sent
    QVector<Step> steps;
    bool isPrint = false; ///< its failure is told to the user

    PrintOrder& command(const QByteArray& bytes) { return add(Kind::Command, bytes); }
    PrintOrder& data(const QByteArray& bytes) { return add(Kind::Data, bytes); }

private:
    PrintOrder& add(Kind kind, const QByteArray& bytes)
    {
        steps.append({kind, bytes});
        return *this;
    }
};

/// Makes an order just before it is sent, away from the GUI thread.
using PrintSource = std::function<PrintOrder()>;

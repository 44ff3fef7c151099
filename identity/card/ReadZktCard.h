#pragma once

#include <QStringList>

/// Reads cards through the reader library and turns their codes into words. GUI thread only: a read waits.
class ReadZktCard
{
public:
    ReadZktCard();
    ~ReadZktCard();
    ReadZktCard(const ReadZktCard&) = delete;
    ReadZktCard& operator=(const ReadZktCard&) = delete;

    int inithycard(); ///< 0 when the reader is open
    /// The library's result. While another object uses the reader, which the program has but once, it stays
    /// open, and that is 0.
    int deinithycard();
    /// Whether more than one object uses the reader.
    static bool isShared();
    /// Only asks for the card's type; the list of texts is empty afterwards. Negative when there is none.
    int readhycard();
    /// Reads a card whole. @return its type; negative when none could be read
    int readhycardinfo();
    /// The texts of the card that was read last, in the library's order, and the path of the portrait's file
    /// behind them; empty after a failure and for types above 3.
    QStringList gethycardinfo() const { return texts_; }

    /// Codes as a card has them, as texts.
    QString readgender(const char* text) const;
    /// Empty for a code that stands for nothing.
    QString readnation(const char* text) const;

private:
    QString decoded(int type, int index, const char* text) const;
    void setUser(bool isUser);

    bool isUser_ = false;
    QStringList texts_;
    QStringList nations_;
};

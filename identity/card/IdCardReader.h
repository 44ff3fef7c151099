#pragma once

#include "ReadZktCard.h"
#include "TemporaryPortrait.h"

#include <QDialog>

#include <memory>
#include <string>

class CardWatch;
class Ui_IdCardReader;
struct CardLayout;

/// Shows the identity card that lies on the reader, takes the next one that is laid there, and saves what it
/// shows as a row of the card information file, with the portrait beside that. GUI thread only; "Read" waits
/// for the reader.
class IdCardReader : public QDialog
{
    Q_OBJECT

public:
    /// `device` is only kept.
    IdCardReader(QWidget* parent, void* device);
    ~IdCardReader() override;

    /// The file to which "Save" adds rows.
    void SetCardPath(const QString& path);
    int zktinitresult() const { return 1; }
    int readidcard() const { return device_ ? 0 : -1; }
    int readsscard() const { return device_ ? 0 : -1; }
    /// Reads the card and shows it; on a failure nothing changes.
    void readidcard_hy();
    void clearinfos();
    /// Adds what is shown to the file, unless the name, the address or `path` is empty.
    void writeinfo2file(const QString& path);

    /// Splits the text in `buf` where `sep` stands, up to a carriage return: zeros end the pieces.
    /// @param parts receives the begins of the pieces; the caller has room for all of them
    static void cardsplit(char* buf, char sep, char** parts, int& count);
    static std::string EncodeBase64(const char* data, int length);
    static std::string DecodeBase64(const char* data, int length, int& outLength);

    void reject() override { close(); }

Q_SIGNALS:
    void setuiclose();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void connectControls();
    void openReader();
    void browse();
    void fill(const CardLayout& layout, const QStringList& texts);
    void showState();
    QString stateText() const;
    QString row() const;

    std::unique_ptr<Ui_IdCardReader> ui_;
    void* device_;
    ReadZktCard card_;
    TemporaryPortrait portrait_;
    CardWatch* watch_;
    QString cardPath_;
    bool hasShownCard_ = false;
};

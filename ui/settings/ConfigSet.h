#pragma once

#include <QDialog>

#include <memory>

class Ui_ConfigSet;

/// The settings: a column of buttons and the page that belongs to the pressed one. Every control stores its
/// change at once, so there is nothing to confirm. Made once and shown again; modal to its parent's window.
/// GUI thread only.
class ConfigSet : public QDialog
{
    Q_OBJECT

public:
    explicit ConfigSet(QWidget* parent = nullptr);
    ~ConfigSet() override;

    /// Makes "Close" the button that Enter presses and gives it the focus. There is one such button; the
    /// number does not matter.
    void setDefaultBtn(int number);
    /// How books are flattened: take fingers out, two pages, clean as a document. Not stored.
    void getBookFlatInfo(bool& removeFinger, bool& doublePage, bool& documentProcess) const;

Q_SIGNALS:
    void booklineclicked(bool checked);
    void languageitemchanged(int row);
    void scansizechanged(const int& row);
    void currentmergepos(const int& row);

private:
    void numberPages();
    void relayPages();

    std::unique_ptr<Ui_ConfigSet> ui_;
    bool removeFinger_ = false;
    bool doublePage_ = false;
    bool documentProcess_ = false;
};

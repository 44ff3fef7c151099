#pragma once

#include <QDialog>

#include <memory>

class Ui_ConfigSet;

/// The settings: a column of buttons and the page that belongs to the pressed one. Every control stores its
/// change at once, so there is nothing to confirm. Modal to its parent's window. The contents are made when
/// they are first shown, so that the start of the program does not wait for them, and kept. GUI thread only.
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

    void setVisible(bool visible) override;

Q_SIGNALS:
    void booklineclicked(bool checked);
    void languageitemchanged(int row);
    void scansizechanged(const int& row);
    void currentmergepos(const int& row);
    void compositechanged(bool checked);
    void shortcutschanged();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void build();
    void numberPages();
    void relayPages();

    std::unique_ptr<Ui_ConfigSet> ui_; ///< null until first shown
    bool removeFinger_ = false;
    bool doublePage_ = false;
    bool documentProcess_ = false;
};

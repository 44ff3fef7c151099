#pragma once

#include "ConfigSettings.h"

#include <QVector>
#include <QWidget>

#include <memory>

class QPushButton;
template <class T> struct Setting;
class Ui_BtnControl;

/// The strip of large icon buttons from which every function is started. It only emits one signal per button.
/// The buttons flow: one row where the width allows it, more rows where it does not. GUI thread only.
class BtnControl : public QWidget
{
    Q_OBJECT

public:
    explicit BtnControl(QWidget* parent = nullptr);
    ~BtnControl() override;

    /// Sets (`on` not 0) or clears the bit `index` of the stored button mask.
    void WriteButton(int on, int index);
    /// Shows the default buttons. The stored mask is only logged: the bar starts the same way every time, and
    /// a button that is hidden by mistake is back after a restart.
    void ReadButton();
    /// Takes all icons from a language folder; both folders are the same ("zh", "hk", "en", "pl" or "jp").
    void SetButtonsStyle(const QString& folder1, const QString& folder2);
    /// The same for one button, 0 to 13.
    void SetButtonStyle(const QString& folder1, const QString& folder2, int index);

    int visibleCount() const { return visibleCount_; } ///< of the seventeen function buttons

Q_SIGNALS:
    void btnMoreClicked();
    void btnScannerClicked();
    void btnDocumentClicked();
    void btnBarcodeClicked();
    void btnPicComposeClicked();
    void btnCardComposeClicked();
    void btnRecordClicked();
    void btnAutoScannerClicked();
    void btnOcrClicked();
    void btnReadIdCardClicked();
    void btnPrintClicked();
    void btnPdfClicked();
    void btnPdfExClicked();
    void btnFingerPrintClicked();
    void btnSignClicked();
    void btnBookscanClicked();
    void btnFaceClicked();
    void btnLaohuaClicked();
    /// The choice in the PDF button's own menu: a PDF of picture files.
    void synthesizePdfClicked();

public Q_SLOTS:
    void onMore();
    /// `state` is a Qt::CheckState: checked shows button `index`, unchecked hides it; both are stored.
    void onDisplayMoreCheck(int index, int state);
    void onDisplayCheckBox(int index, bool checked); ///< nothing to do; the state's slot above does it

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void connectButtons();
    void nameButtons();
    void makePdfMenu();
    void addPdfChoice(const QString& text, const QString& name, const Setting<bool>& choice);

    std::unique_ptr<Ui_BtnControl> ui_;
    QVector<QPushButton*> buttons_; ///< by bit of the mask
    ConfigSettings settings_;
    int visibleCount_ = 0;
};

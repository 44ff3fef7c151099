#pragma once

#include <QMetaObject>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <memory>

class QButtonGroup;
class QComboBox;
class QMenu;
class Ui_ToolBar;

/// The strip over the live picture: device, model and resolution choosers, cropping choice, second-camera
/// check box and the view buttons. GUI thread only.
///
/// The cropping choice is one of three or none. clickDeskewSign() carries the id of the button, 1 automatic
/// deskew, 2 second option, 3 selection, the same number that the setting "Deskew" stores. Whoever forwards
/// it as a zero-based option (the live view does) subtracts one, there and nowhere else. When the choice goes
/// from one to another, the former is reported off before the new one is reported on.
class ToolBar : public QWidget
{
    Q_OBJECT

public:
    explicit ToolBar(QWidget* parent = nullptr);
    ~ToolBar() override;

    /// Both replace what was in the list; the first row becomes current.
    void SetDeviceNames(const QStringList& names);
    void SetResolutions(const QStringList& resolutions);
    /// Each appends one row; an empty text adds nothing.
    void SetDeviceName(const QString& name);
    void SetModelType(const QString& model);
    void SetResolution(const QString& resolution);
    /// Selects a row without any signal; -1 selects none, a row that does not exist changes nothing.
    void SetDefaultDevice(int index);
    void SetDefaultResolution(int index);

    int GetCurrentDeviceIndex() const;     ///< -1 without any
    int GetResolutionCurrentIndex() const; ///< -1 without any
    int GetResolutionCurrentCount() const;
    QString GetResolutionCurrentText(int index) const; ///< "width*height"; empty when there is no such row

    void SetAssistEnable(bool enable); ///< a ticked box stays enabled: it must remain to be unticked
    /// Ticks the box as a click would: the signal goes out when the state changes.
    void SetAssistChecked(bool checked);
    /// Enables or disables the view buttons and the choosers. The check box and the cropping buttons stay as
    /// they are: the first must remain to be unticked, the others to be switched off before a composed
    /// capture.
    void SetAllbuttonsEnable(bool enable);
    /// Ticks the cropping button of this id, or none, and tells nobody.
    void ShowDeskew(int id);
    /// Shows the cropping buttons alone, so that little of the picture is hidden; all else is in the menu.
    void SetCroppingOnly(bool only);

Q_SIGNALS:
    void checkDeviceSign(int index);
    void checkModelSign(int index);
    void checkResolutionSign(int index);
    void checkAssistSign(bool checked);
    void clickDeskewSign(int id, bool checked); ///< id 1 to 3
    void clickAdapSign();
    void clickFullScreenSign();
    void clickZoomSign(int direction);      ///< 1 in, 2 out
    void clickRotateSign(int quarterTurns); ///< absolute orientation, 0 to 3, clockwise
    void clickFreezSign();

public Q_SLOTS:
    /// Reports a chosen device; another choice made while that one is being opened is not reported.
    void onDeviceChange(int index);

    QSize sizeHint() const override;        ///< of the roomy form, also while the bar is compact
    QSize minimumSizeHint() const override; ///< with all in the menu that may go there

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void connectChoosers();
    void connectDeviceChooser();
    void connectViewButtons();
    void makeDeskewGroup();
    void onDeskewToggled(int id, bool checked);
    void onAssistToggled(bool checked);
    void rotate(int step);
    void measure();
    void setCompact(bool compact);
    bool isWanted(const QWidget* tool) const;
    int widthOf(const QVector<QWidget*>& tools) const;
    QVector<QWidget*> wantedTools() const;
    QVector<QWidget*> toolsFor(int width) const;
    void arrange();
    void fillMenu(QMenu& menu);

    std::unique_ptr<Ui_ToolBar> ui_;
    QButtonGroup* deskewGroup_ = nullptr;
    QMetaObject::Connection deviceConnection_;
    int rotation_ = 0; ///< quarter turns, 0 to 3
    QString assistText_;
    QVector<QWidget*> tools_; ///< in their order in the bar, without the menu's button
    bool compact_ = false;
    bool croppingOnly_ = false;
    int roomyWidth_ = 0; ///< px from which on the check box has its caption
    int leastWidth_ = 0; ///< px below which controls overlap
};

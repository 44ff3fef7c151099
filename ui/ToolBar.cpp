#include "ToolBar.h"

#include "Look.h"
#include "Settings.h"
#include "ToolMenu.h"

#include "ui_ToolBar.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QMenu>
#include <QSignalBlocker>

#include <algorithm>

namespace {

void fill(QComboBox& box, const QStringList& texts)
{
    box.clear();
    box.addItems(texts);
}

void append(QComboBox& box, const QString& text)
{
    if (!text.isEmpty())
        box.addItem(text);
}

void select(QComboBox& box, int row)
{
    if (row < box.count())
        box.setCurrentIndex(row);
}

/// What the layout gives it at least.
int leastWidth(const QWidget& tool)
{
    const int set = tool.minimumWidth();
    return set > 0 ? set : std::max(tool.sizeHint().width(), tool.minimumSizeHint().width());
}

} // namespace

ToolBar::ToolBar(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui_ToolBar>())
{
    ui_->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetNoConstraint); // minimumSizeHint() speaks for the compact form
    assistText_ = ui_->checkAssist->text();
    Look::dressFields(*this);
    for (int i = 0; i < layout()->count(); ++i)
        if (QWidget* tool = layout()->itemAt(i)->widget(); tool && tool != ui_->buttonOverflow)
            tools_.append(tool);
    for (QPushButton* button : findChildren<QPushButton*>())
        if (!button->icon().isNull())
            button->setIcon(Look::dimmable(button->icon(), button->iconSize()));
    auto* menu = new QMenu(ui_->buttonOverflow);
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { fillMenu(*menu); });
    // Not as the button's own menu, which a press would open already; a drag may begin here.
    connect(ui_->buttonOverflow, &QPushButton::clicked, menu, [this, menu] {
        menu->popup(ui_->buttonOverflow->mapToGlobal(ui_->buttonOverflow->rect().bottomLeft()));
    });
    makeDeskewGroup();
    connectChoosers();
    connectViewButtons();
    measure();
}

ToolBar::~ToolBar() = default;

void ToolBar::makeDeskewGroup()
{
    deskewGroup_ = new QButtonGroup(this);
    deskewGroup_->setExclusive(false); // an exclusive group could not be switched off again
    deskewGroup_->addButton(ui_->buttonDeskew, 1);
    deskewGroup_->addButton(ui_->buttonDeskewEx, 2);
    deskewGroup_->addButton(ui_->buttonManualDeskew, 3);
    if (QAbstractButton* stored = deskewGroup_->button(settings::deskew.read()))
        stored->setChecked(true);
    connect(deskewGroup_, &QButtonGroup::idToggled, this, &ToolBar::onDeskewToggled);
}

void ToolBar::connectChoosers()
{
    connectDeviceChooser();
    connect(ui_->comboModel, QOverload<int>::of(&QComboBox::activated), this, &ToolBar::checkModelSign);
    connect(
        ui_->comboResolution, QOverload<int>::of(&QComboBox::activated), this, &ToolBar::checkResolutionSign);
    connect(ui_->checkAssist, &QCheckBox::toggled, this, &ToolBar::onAssistToggled);
}

void ToolBar::connectDeviceChooser()
{
    deviceConnection_ =
        connect(ui_->comboDevice, QOverload<int>::of(&QComboBox::activated), this, &ToolBar::onDeviceChange);
}

void ToolBar::connectViewButtons()
{
    connect(ui_->buttonAdapt, &QPushButton::clicked, this, &ToolBar::clickAdapSign);
    connect(ui_->buttonFullScreen, &QPushButton::clicked, this, &ToolBar::clickFullScreenSign);
    connect(ui_->buttonZoomIn, &QPushButton::clicked, this, [this] { Q_EMIT clickZoomSign(1); });
    connect(ui_->buttonZoomOut, &QPushButton::clicked, this, [this] { Q_EMIT clickZoomSign(2); });
    connect(ui_->buttonRotateLeft, &QPushButton::clicked, this, [this] { rotate(-1); });
    connect(ui_->buttonRotateRight, &QPushButton::clicked, this, [this] { rotate(1); });
    connect(ui_->buttonFreeze, &QPushButton::clicked, this, &ToolBar::clickFreezSign);
}

void ToolBar::SetDeviceNames(const QStringList& names)
{
    const bool isUnrolled = ui_->comboDevice->view()->isVisible();
    fill(*ui_->comboDevice, names);
    if (isUnrolled)
        ui_->comboDevice->showPopup(); // as long as the new list
}

void ToolBar::SetResolutions(const QStringList& resolutions)
{
    fill(*ui_->comboResolution, resolutions);
}

void ToolBar::SetDeviceName(const QString& name)
{
    append(*ui_->comboDevice, name);
}

void ToolBar::SetModelType(const QString& model)
{
    append(*ui_->comboModel, model);
    measure(); // with the first entry the chooser appears
}

void ToolBar::SetResolution(const QString& resolution)
{
    append(*ui_->comboResolution, resolution);
}

void ToolBar::SetDefaultDevice(int index)
{
    select(*ui_->comboDevice, index);
}

void ToolBar::SetDefaultResolution(int index)
{
    select(*ui_->comboResolution, index);
}

int ToolBar::GetCurrentDeviceIndex() const
{
    return ui_->comboDevice->currentIndex();
}

int ToolBar::GetResolutionCurrentIndex() const
{
    return ui_->comboResolution->currentIndex();
}

int ToolBar::GetResolutionCurrentCount() const
{
    return ui_->comboResolution->count();
}

QString ToolBar::GetResolutionCurrentText(int index) const
{
    return ui_->comboResolution->itemText(index);
}

void ToolBar::SetAssistEnable(bool enable)
{
    ui_->checkAssist->setEnabled(enable || ui_->checkAssist->isChecked());
}

void ToolBar::SetAssistChecked(bool checked)
{
    ui_->checkAssist->setChecked(checked);
}

void ToolBar::SetAllbuttonsEnable(bool enable)
{
    const std::initializer_list<QWidget*> covered{ui_->comboDevice,
                                                  ui_->comboModel,
                                                  ui_->comboResolution,
                                                  ui_->buttonAdapt,
                                                  ui_->buttonFullScreen,
                                                  ui_->buttonZoomIn,
                                                  ui_->buttonZoomOut,
                                                  ui_->buttonRotateLeft,
                                                  ui_->buttonRotateRight,
                                                  ui_->buttonFreeze};
    for (QWidget* widget : covered)
        widget->setEnabled(enable);
}

void ToolBar::onDeviceChange(int index)
{
    disconnect(deviceConnection_);
    Q_EMIT checkDeviceSign(index);
    if (!deviceConnection_) // unless the receiver came back here itself
        connectDeviceChooser();
}

void ToolBar::onDeskewToggled(int id, bool checked)
{
    if (checked) {
        for (QAbstractButton* button : deskewGroup_->buttons()) {
            if (deskewGroup_->id(button) != id)
                button->setChecked(false); // reported off before the new choice is reported on
        }
    }
    Q_EMIT clickDeskewSign(id, checked);
}

void ToolBar::ShowDeskew(int id)
{
    const QSignalBlocker quiet(deskewGroup_);
    for (QAbstractButton* button : deskewGroup_->buttons())
        button->setChecked(deskewGroup_->id(button) == id);
}

void ToolBar::onAssistToggled(bool checked)
{
    SetAllbuttonsEnable(!checked);
    Q_EMIT checkAssistSign(checked);
}

void ToolBar::rotate(int step)
{
    rotation_ = (rotation_ + step + 4) % 4;
    Q_EMIT clickRotateSign(rotation_);
}

void ToolBar::measure()
{
    ensurePolished();
    setCompact(true);
    leastWidth_ = widthOf(toolsFor(0));
    setCompact(false);
    roomyWidth_ = widthOf(wantedTools());
    arrange();
}

/// The chooser of the model stands where it has something to say, and in the compact form only where it
/// leaves a choice.
bool ToolBar::isWanted(const QWidget* tool) const
{
    return tool != ui_->comboModel || ui_->comboModel->count() > (compact_ ? 1 : 0);
}

QVector<QWidget*> ToolBar::wantedTools() const
{
    QVector<QWidget*> wanted;
    std::copy_if(tools_.begin(), tools_.end(), std::back_inserter(wanted), [this](const QWidget* tool) {
        return isWanted(tool);
    });
    return wanted;
}

/// @return px; with the menu's button where these are not all
int ToolBar::widthOf(const QVector<QWidget*>& tools) const
{
    const QMargins margins = layout()->contentsMargins();
    int width = margins.left() + margins.right();
    for (const QWidget* tool : tools)
        width += leastWidth(*tool) + layout()->spacing();
    if (tools.size() < wantedTools().size())
        width += leastWidth(*ui_->buttonOverflow) + layout()->spacing();
    return width;
}

/// What stays in the bar. The mouse has other ways to what goes first.
QVector<QWidget*> ToolBar::toolsFor(int width) const
{
    if (croppingOnly_)
        return {ui_->buttonDeskew, ui_->buttonDeskewEx, ui_->buttonManualDeskew};
    const QVector<QVector<QWidget*>> giveWay{{ui_->buttonZoomIn, ui_->buttonZoomOut},
                                             {ui_->buttonAdapt, ui_->buttonFullScreen},
                                             {ui_->buttonRotateLeft, ui_->buttonRotateRight},
                                             {ui_->comboModel},
                                             {ui_->buttonFreeze, ui_->sepView},
                                             {ui_->checkAssist, ui_->sepAssist},
                                             {ui_->buttonDeskewEx, ui_->sepDeskew}};
    QVector<QWidget*> tools = wantedTools();
    for (const QVector<QWidget*>& group : giveWay) {
        if (widthOf(tools) <= width)
            break;
        for (QWidget* tool : group)
            tools.removeOne(tool);
    }
    return tools;
}

void ToolBar::arrange()
{
    setCompact(!croppingOnly_ && width() < roomyWidth_);
    const QVector<QWidget*> shown = toolsFor(width());
    for (QWidget* tool : tools_)
        tool->setVisible(shown.contains(tool));
    ui_->buttonOverflow->setVisible(shown.size() < wantedTools().size());
}

void ToolBar::fillMenu(QMenu& menu)
{
    QVector<QWidget*> others = wantedTools();
    others.erase(
        std::remove_if(others.begin(), others.end(), [](QWidget* tool) { return !tool->isHidden(); }),
        others.end());
    toolMenu::fill(menu, others);
}

void ToolBar::SetCroppingOnly(bool only)
{
    croppingOnly_ = only;
    arrange();
    updateGeometry();
}

void ToolBar::setCompact(bool compact)
{
    compact_ = compact;
    static const QIcon camera(QStringLiteral(":/images/common/images/common/video.png"));
    ui_->checkAssist->setText(compact ? QString() : assistText_);
    ui_->checkAssist->setIcon(compact ? camera : QIcon());
    const int side = compact ? 28 : 32; // px
    for (QPushButton* button : findChildren<QPushButton*>())
        button->setFixedSize(side, side);
    constexpr int arrow = 42; // px beside a chooser's text
    const QFontMetrics metrics = ui_->comboResolution->fontMetrics();
    ui_->comboResolution->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("0000*0000")) + arrow);
    ui_->comboModel->setMinimumWidth(compact ? 60
                                             : metrics.horizontalAdvance(QStringLiteral("MJPG")) + arrow);
    ui_->comboDevice->setMinimumWidth(compact ? 64 : 120);
    layout()->setSpacing(compact ? 1 : 4);
    const int edge = compact ? 4 : 8;
    layout()->setContentsMargins(edge, 6, edge, 6);
}

QSize ToolBar::sizeHint() const
{
    if (croppingOnly_)
        return QSize(widthOf(toolsFor(0)), minimumHeight());
    constexpr int deviceName = 80; // px more than the least for the chooser of the device
    return QSize(roomyWidth_ + deviceName, minimumHeight());
}

QSize ToolBar::minimumSizeHint() const
{
    return QSize(leastWidth_, minimumHeight());
}

void ToolBar::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

void ToolBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

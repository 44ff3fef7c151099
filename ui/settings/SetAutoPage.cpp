#include "SetAutoPage.h"

#include "Look.h"
#include "SettingBinding.h"

#include "ui_SetAutoPage.h"

#include <QButtonGroup>

namespace {

constexpr int longestDelay = 30; // seconds

/// Without a stored choice this page offers the page change first, whatever the scan itself takes.
const Setting<int> shownType{settings::autoScanType.key, 0};

} // namespace

SetAutoPage::SetAutoPage(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui_SetAutoPage>())
{
    ui_->setupUi(this);
    Look::dress(*ui_->frameBody);
    loadMode();
    loadDelay();
}

SetAutoPage::~SetAutoPage() = default;

void SetAutoPage::loadMode()
{
    auto* group = new QButtonGroup(this);
    group->addButton(ui_->radioAutoScan, 0);
    group->addButton(ui_->radioTimerScan, 1);
    SettingBinding::tie(*group, shownType, settings_);
}

void SetAutoPage::loadDelay()
{
    for (int seconds = 1; seconds <= longestDelay; ++seconds)
        ui_->comboDelay->addItem(QString::number(seconds));
    ui_->comboDelay->setCurrentIndex(settings::autoScanDelay.read(settings_) - 1);
    connect(ui_->comboDelay, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int row) {
        settings::autoScanDelay.write(settings_, row + 1);
    });
}

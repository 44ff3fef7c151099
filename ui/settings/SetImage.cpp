#include "SetImage.h"

#include "Dialogs.h"
#include "LanguageFolder.h"
#include "Look.h"
#include "PlainTip.h"
#include "SettingBinding.h"

#include "ui_SetImage.h"

#include <QFileDialog>

namespace {

QString browseStyle(const QString& folder)
{
    return QStringLiteral("QPushButton{border-image:url(:/images/%1/images/%1/browse.png);"
                          "background-color:rgba(0,0,0,0);}"
                          "QPushButton:hover{image: url(:/images/%1/images/%1/browse.png);"
                          "border-image: url(:/images/common/images/common/hover.png);}"
                          "QPushButton:pressed{image: url(:/images/%1/images/%1/browse.png);"
                          "border-image: url(:/images/common/images/common/pressed.png);}")
        .arg(folder);
}

} // namespace

SetImage::SetImage(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui_SetImage>())
{
    ui_->setupUi(this);
    Look::dressFields(*ui_->frameBody);
    ui_->buttonBrowse->setStyleSheet(browseStyle(languageFolder(settings::appLanguage.read(settings_))));
    load();
    connectSignals();
}

SetImage::~SetImage() = default;

void SetImage::load()
{
    using SettingBinding::tie;
    showPath(settings::savePath(settings_));
    tie(*ui_->comboFormat, settings::imageFormat, settings_);
    tie(*ui_->checkComposite, settings::cameraSynthesis, settings_);
    tie(*ui_->comboMergePosition, settings::mergePos, settings_);
    tie(*ui_->checkSound, settings::scannerSound, settings_);
    tie(*ui_->checkBookLine, settings::bookLine, settings_);
    tie(*ui_->comboWatermarkPosition, settings::watermarkPos, settings_);
    tie(*ui_->checkTimeWatermark, settings::watermarkTime, settings_);
    tie(*ui_->editWatermark, settings::watermarkText, settings_);
    // The camera is asked for the new size before it is stored.
    ui_->comboScanSize->setCurrentIndex(settings::scanSize.read(settings_));
    connect(ui_->comboScanSize, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int row) {
        Q_EMIT scansizechanged(row);
        settings::scanSize.write(settings_, row);
    });
}

void SetImage::connectSignals()
{
    connect(ui_->buttonBrowse, &QPushButton::clicked, this, &SetImage::onBrowse);
    connect(ui_->comboMergePosition,
            qOverload<int>(&QComboBox::currentIndexChanged),
            this,
            &SetImage::currentmergepos);
    connect(ui_->checkComposite, &QCheckBox::toggled, this, &SetImage::compositechanged);
    connect(ui_->checkBookLine, &QCheckBox::toggled, this, &SetImage::booklineclicked);
    connect(ui_->checkRemoveFinger, &QCheckBox::toggled, this, &SetImage::bookrmfingerclicked);
    connect(ui_->checkDoublePage, &QCheckBox::toggled, this, &SetImage::bookdoublepageclicked);
    connect(ui_->checkDocProcess, &QCheckBox::toggled, this, &SetImage::bookdocprocesclicked);
}

void SetImage::onBrowse()
{
    // Owned by the window: a child of the page would take over the colours of the page.
    QFileDialog dialog(window(), tr("Select Directory"), settings::savePath(settings_));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    const QStringList chosen = Dialogs::instance().chooseFiles(dialog);
    if (chosen.isEmpty() || chosen.first().isEmpty())
        return;
    showPath(chosen.first());
    settings::setSavePath(settings_, chosen.first());
}

void SetImage::showPath(const QString& directory)
{
    ui_->editPath->setText(directory);
    ui_->editPath->setToolTip(plainTip(directory)); // a long path does not fit
}

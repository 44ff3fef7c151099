#include "ConfigSet.h"

#include "Look.h"

#include "ui_ConfigSet.h"

#include <QButtonGroup>
#include <QShowEvent>

ConfigSet::ConfigSet(QWidget* parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
{
    setWindowModality(Qt::WindowModal);
}

ConfigSet::~ConfigSet() = default;

void ConfigSet::setVisible(bool visible)
{
    if (visible)
        build();
    QDialog::setVisible(visible);
}

void ConfigSet::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (event->spontaneous() || !parentWidget())
        return;
    // The toolkit's own placement leaves room for a frame that this window does not have.
    move(parentWidget()->window()->geometry().center() - rect().center());
}

void ConfigSet::build()
{
    if (ui_)
        return;
    ui_ = std::make_unique<Ui_ConfigSet>();
    ui_->setupUi(this);
    Look::dress(*ui_->frameFoot);
    ui_->titleBar->SetTitle(tr("Setting"));
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    ui_->titleBar->ShowMaximizeButton(false);
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &QWidget::close);
    connect(ui_->buttonClose, &QPushButton::clicked, this, &QWidget::close);
    numberPages();
    relayPages();
    ui_->buttonGlobal->setFocus(); // else the toolkit prefers the default button
}

void ConfigSet::numberPages()
{
    auto* group = new QButtonGroup(this);
    int page = 0;
    for (QPushButton* button :
         {ui_->buttonGlobal, ui_->buttonImage, ui_->buttonAutoPage, ui_->buttonShortcut, ui_->buttonAbout})
        group->addButton(button, page++);
    connect(group, &QButtonGroup::idClicked, ui_->pages, &QStackedWidget::setCurrentIndex);
}

void ConfigSet::relayPages()
{
    connect(ui_->pageGlobal, &SetGlobal::languageitemchanged, this, &ConfigSet::languageitemchanged);
    connect(ui_->pageShortcut, &SetShortcut::shortcutschanged, this, &ConfigSet::shortcutschanged);
    const SetImage* image = ui_->pageImage;
    connect(image, &SetImage::booklineclicked, this, &ConfigSet::booklineclicked);
    connect(image, &SetImage::scansizechanged, this, &ConfigSet::scansizechanged);
    connect(image, &SetImage::currentmergepos, this, &ConfigSet::currentmergepos);
    connect(image, &SetImage::compositechanged, this, &ConfigSet::compositechanged);
    connect(image, &SetImage::bookrmfingerclicked, this, [this](bool checked) { removeFinger_ = checked; });
    connect(image, &SetImage::bookdoublepageclicked, this, [this](bool checked) { doublePage_ = checked; });
    connect(
        image, &SetImage::bookdocprocesclicked, this, [this](bool checked) { documentProcess_ = checked; });
}

void ConfigSet::setDefaultBtn(int)
{
    build();
    ui_->buttonClose->setDefault(true);
    ui_->buttonClose->setFocus(Qt::OtherFocusReason);
}

void ConfigSet::getBookFlatInfo(bool& removeFinger, bool& doublePage, bool& documentProcess) const
{
    removeFinger = removeFinger_;
    doublePage = doublePage_;
    documentProcess = documentProcess_;
}

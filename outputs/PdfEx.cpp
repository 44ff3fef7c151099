#include "PdfEx.h"

#include "ComeForward.h"
#include "Dialogs.h"
#include "FileHandover.h"
#include "FileNaming.h"
#include "JobBar.h"
#include "Look.h"
#include "NamedFiles.h"
#include "PdfWriting.h"
#include "SavePicture.h"
#include "Settings.h"
#include "mirvakcamera.h"

#include "ui_PdfEx.h"

#include <QCloseEvent>
#include <QElapsedTimer>
#include <QFileDialog>

#include <algorithm>
#include <limits>

namespace {

const QString buttonStyle = QStringLiteral("background-color: rgb(8, 115, 140);\ncolor: rgb(85, 0, 0);");
constexpr int narrowestButton = 100; // px
constexpr int cutAtEdges = 15;       // px
constexpr int listingAtOnce = 15;    // milliseconds of the window's time for listing chosen files

/// The last three characters, as they are: other spellings and kinds are left out.
bool canBePage(const QString& path)
{
    const QString end = path.right(3);
    return end == QLatin1String("png") || end == QLatin1String("jpg") || end == QLatin1String("peg");
}

/// Adds what can be a page to `pages`. @return the others
QStringList dividePages(const QStringList& files, QStringList& pages)
{
    QStringList others;
    std::partition_copy(
        files.begin(), files.end(), std::back_inserter(pages), std::back_inserter(others), canBePage);
    return others;
}

} // namespace

PdfEx::PdfEx(QWidget* parent, MirvakCamera& camera)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), writing_(new PdfWriting(camera, this))
{
    setObjectName(QStringLiteral("PdfEx"));
    setWindowTitle(tr("PDFEX"));
    connect(writing_, &PdfWriting::done, this, &PdfEx::onWritten);
    connect(&listTimer_, &QTimer::timeout, this, [this] { listWaiting(listingAtOnce); });
}

PdfEx::~PdfEx() = default;

void PdfEx::build()
{
    if (ui_)
        return;
    ui_ = std::make_unique<Ui_PdfEx>();
    ui_->setupUi(this);
    dressButtons();
    jobBar_ = new JobBar(this);
    ui_->layoutOuter->insertWidget(ui_->layoutOuter->count() - 1, jobBar_);
    ui_->pages->becomePageList();
    ui_->titleBar->SetTitle(windowTitle());
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &PdfEx::onClosePdf);
    connect(ui_->AddImages, &QPushButton::clicked, this, &PdfEx::onAddImages);
    connect(ui_->Scanner, &QPushButton::clicked, this, &PdfEx::onScannerImg);
    connect(ui_->Pdf, &QPushButton::clicked, this, &PdfEx::onPdfEx);
    connect(ui_->OpenPath, &QPushButton::clicked, this, &PdfEx::onOpenPath);
    connectChoices();
}

/// The same choices as in the menu of the PDF button.
void PdfEx::connectChoices()
{
    ui_->choices->setAttribute(Qt::WA_StyledBackground);
    Look::dressFields(*ui_->choices);
    connect(ui_->checkText, &QCheckBox::toggled, this, [](bool isOn) {
        ConfigSettings store;
        settings::pdfText.write(store, isOn);
    });
    connect(ui_->checkArchive, &QCheckBox::toggled, this, [](bool isOn) {
        ConfigSettings store;
        settings::pdfArchive.write(store, isOn);
    });
}

void PdfEx::showChoices()
{
    ConfigSettings store;
    ui_->checkText->setChecked(settings::pdfText.read(store));
    ui_->checkArchive->setChecked(settings::pdfArchive.read(store));
}

void PdfEx::dressButtons()
{
    ui_->OpenPath->setObjectName(QStringLiteral("Open-path"));
    for (PlateButton* button : {ui_->AddImages, ui_->Scanner, ui_->Pdf, ui_->OpenPath}) {
        button->setStyleSheet(buttonStyle);
        button->setMinimumWidth(std::max(button->sizeHint().width(), narrowestButton));
    }
}

void PdfEx::ShowPdf(void* device, int width, int height, int rotation, int resolutionIndex)
{
    device_ = device;
    width_ = width;
    height_ = height;
    rotation_ = rotation;
    resolutionIndex_ = resolutionIndex;
    comeForward(*this);
}

void PdfEx::SetPdfDataframe(const QImage& frame)
{
    if (takesFrames_) // and so the preview has been made
        ui_->preview->SetImageData(frame);
}

void PdfEx::SetPageMark(const PageMark& mark)
{
    if (takesFrames_)
        ui_->preview->SetPageMark(mark);
}

void PdfEx::onGetFramedata(const QImage& frame)
{
    SetPdfDataframe(frame);
}

void PdfEx::SetScannerImage(const QString& path)
{
    build();
    listWaiting(std::numeric_limits<int>::max()); // what was chosen before comes before it
    ui_->pages->AddImage(path, -1);
    if (!canBePage(path))
        ShowNote(leftOutText({path}));
}

void PdfEx::ShowNote(const QString& text)
{
    build();
    ui_->labelNote->setText(text);
}

QStringList PdfEx::pages() const
{
    return ui_ ? ui_->pages->GetFilePaths() + waiting_ : QStringList();
}

void PdfEx::onScannerImg()
{
    ShowNote({});
    if (device_)
        Q_EMIT pdfexscannered();
}

void PdfEx::onAddImages()
{
    build();
    ShowNote({});
    ConfigSettings store;
    QFileDialog dialog(this);
    dialog.resize(width() / 2, height() / 2);
    dialog.setNameFilter(tr("Image files(*.jpg *.png *.bmp)"));
    dialog.setDirectory(settings::savePath(store));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setViewMode(QFileDialog::List);
    const QStringList chosen = Dialogs::instance().chooseFiles(dialog);
    ShowNote(leftOutText(dividePages(chosen, waiting_)));
    listWaiting(listingAtOnce);
}

QString PdfEx::leftOutText(const QStringList& files)
{
    return files.isEmpty()
               ? QString()
               : tr("Not in the PDF: %1. Only files whose names end in jpg, jpeg or png, in small letters, "
                    "become pages.")
                     .arg(namedFiles(files));
}

/// Lists chosen files for that long; the rest follows when the window has seen to other things.
void PdfEx::listWaiting(int milliseconds)
{
    QElapsedTimer time;
    time.start();
    while (!waiting_.isEmpty() && time.elapsed() < milliseconds)
        ui_->pages->AddImage(waiting_.takeFirst(), -1);
    if (waiting_.isEmpty())
        listTimer_.stop();
    else if (!listTimer_.isActive())
        listTimer_.start(0);
}

void PdfEx::onPdfEx()
{
    build();
    listWaiting(std::numeric_limits<int>::max());
    if (writing_->isRunning())
        return;
    pictures_.clear();
    leftOut_ = dividePages(ui_->pages->GetFilePaths(), pictures_);
    if (pictures_.isEmpty())
        return ShowNote(leftOut_.isEmpty() ? tr("There are no pages yet.") : leftOutText(leftOut_));
    setBusy(true);
    form_ = pdfFile::wishedForm();
    ConfigSettings store;
    jobBar_->follow(tr("The PDF is being written..."),
                    writing_->start(pictures_, pdfFile::pathIn(settings::savePath(store)), form_));
}

void PdfEx::setBusy(bool isBusy)
{
    ui_->panel->setDisabled(isBusy);
    ui_->pages->setDisabled(isBusy);
    ui_->choices->setDisabled(isBusy);
    ShowNote({});
}

void PdfEx::onWritten(const pdfFile::Result& result)
{
    setBusy(false);
    if (result.code == MIRVAK_STOPPED)
        return ShowNote(tr("Cancelled: no PDF was written. The pages stay in the list."));
    if (!result.unreadable.isEmpty())
        return ShowNote(
            tr("No PDF was written, because this cannot be read: %1. Take it out of the list or put "
               "it right, then try again.")
                .arg(namedFiles(result.unreadable)));
    if (result.code != MIRVAK_OK)
        return ShowNote(
            tr("The PDF could not be written. The pages stay in the list. Please check the folder."));
    QPixmap icon = pdfFile::icon();
    Q_EMIT setpdfexthumbnail(icon, result.path);
    Q_EMIT pdfMade(result.path, pictures_, form_);
    if (leftOut_.isEmpty())
        close();
    else
        ShowNote(tr("The PDF is written.") + QLatin1Char(' ') + leftOutText(leftOut_));
}

void PdfEx::onOpenPath()
{
    ConfigSettings store;
    ShowNote(FileHandover::openFolder(settings::savePath(store)));
}

void PdfEx::onClosePdf()
{
    close();
}

QString PdfEx::imageSave(const QImage& image, int kind)
{
    QString path = image.isNull() ? QString() : getImagePath();
    const bool isWritten = kind == 0 || kind == 1 || kind == 3;
    if (path.isEmpty() || !isWritten)
        return path;
    const QRect inside = image.rect().adjusted(cutAtEdges, cutAtEdges, -cutAtEdges, -cutAtEdges);
    const bool isCut = settings::deskew.read() == 1;
    return savePicture(isCut ? image.copy(inside) : image, path);
}

QString PdfEx::getImagePath() const
{
    ConfigSettings store;
    return FileNaming(store).getImagePath();
}

QString PdfEx::getNameFormat() const
{
    ConfigSettings store;
    return FileNaming(store).getNameFormat();
}

qint64 PdfEx::getNameIndex(const QString& directory, const QString& prefix, const QString& extension) const
{
    return FileNaming::getNameIndex(directory, prefix, extension);
}

void PdfEx::finish()
{
    writing_->giveUp();
}

QString PdfEx::questionBeforeClosing() const
{
    if (pages().isEmpty() || writing_->isRunning()) // which keeps the dialog open
        return {};
    return tr("The list of pages is not in a PDF yet. Close and give up the list? The picture files stay.");
}

void PdfEx::setVisible(bool visible)
{
    if (visible) {
        build();
        showChoices();
    }
    QWidget::setVisible(visible);
}

void PdfEx::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    takesFrames_ = true;
    if (event->spontaneous() || !parentWidget() || isMaximized())
        return;
    const QWidget* host = parentWidget()->window();
    resize((host->size() * 4 / 5).expandedTo(minimumSizeHint()));
    move(host->geometry().center() - rect().center());
}

void PdfEx::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        takesFrames_ = false;
}

void PdfEx::closeEvent(QCloseEvent* event)
{
    if (writing_->isRunning())
        return event->ignore();
    device_ = nullptr;
    width_ = height_ = rotation_ = 0;
    takesFrames_ = false;
    Q_EMIT setpdfquitsignal();
    if (ui_)
        forgetPages();
    QWidget::closeEvent(event);
}

void PdfEx::forgetPages()
{
    waiting_.clear();
    listTimer_.stop();
    ui_->pages->clearthumbnail(false);
    ui_->preview->ClearFrame();
    ShowNote({});
}

void PdfEx::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

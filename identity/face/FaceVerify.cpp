#include "FaceVerify.h"

#include "Dialogs.h"
#include "FaceMatch.h"
#include "Look.h"

#include "ui_FaceVerify.h"

#include <QCloseEvent>
#include <QDir>
#include <QTemporaryFile>

#include <cstdio>
#include <thread>

namespace {

constexpr int residentCard = 0;
constexpr int resultPoints = 20;
constexpr std::chrono::microseconds pause(200);

/// Places in the list of a resident's card.
enum Field { Name, Gender, Nation, Born, Address, Number, Department, From, To, Portrait, FieldCount };

} // namespace

FaceVerify::FaceVerify(QWidget* parent, MirvakCamera* camera)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), ui_(std::make_unique<Ui_FaceVerify>()),
      cameras_(*camera,
               GetFaceCameraData,
               GetFaceCameraDataIR,
               this,
               [this](const QImage& frame) { showFrame(frame); }),
      capture_(*camera, cameras_, [this]() -> QWidget& { return *ui_->video; })
{
    ui_->setupUi(this);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_QuitOnClose, false); // the program ends with its main window
    setWindowTitle(tr("Face Verify"));
    dress();
    connectButtons();
}

FaceVerify::~FaceVerify()
{
    closeDevices();
}

void FaceVerify::dress()
{
    Look::dress(*ui_->frameBody);
    ui_->titleBar->SetTitle(tr("Face Verify"));
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMaximizeButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    ui_->titleBar->ShowCloseButton(true);
    QPalette palette = ui_->labelResult->palette();
    palette.setColor(QPalette::WindowText, Qt::red);
    ui_->labelResult->setPalette(palette);
    QFont font = ui_->labelResult->font();
    font.setPointSize(resultPoints);
    ui_->labelResult->setFont(font);
    ui_->video->setFaceFinder([this] { return watch_.face(); });
}

void FaceVerify::connectButtons()
{
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &QWidget::close);
    connect(ui_->buttonReadCard, &QPushButton::clicked, this, &FaceVerify::readidcard);
    connect(ui_->buttonScanner, &QPushButton::clicked, this, [this] {
        scannerimg();
        scannerimgIR();
    });
    connect(ui_->buttonVerify, &QPushButton::clicked, this, &FaceVerify::onFaceVerify);
    connect(ui_->buttonLiveFace, &QPushButton::clicked, this, &FaceVerify::onLiveFace);
    connect(ui_->buttonOneClick, &QPushButton::clicked, this, &FaceVerify::onOneClickFaceVerify);
    connect(&cameras_, &FaceCameras::lost, this, [this] {
        if (!cameras_.isOpen(FaceRole::colour) && !cameras_.isOpen(FaceRole::infrared))
            ui_->video->clear();
        ui_->video->setPlaceholder(tr("The face camera was disconnected."));
        end(tr("The face camera was disconnected."));
    });
}

// --- devices ----------------------------------------------------------------------------------------------

void FaceVerify::SetMainIdx(int index)
{
    isReaderOpen_ = card_.inithycard() == 0;
    if (isReaderOpen_) {
        mainIndex_ = index;
        return;
    }
    Dialogs::warn(this, tr("Init IDCard failed,this device may not support this feature!"));
    Q_EMIT closefacesign();
}

void FaceVerify::SetOpenCamera(int, int)
{
    ui_->video->setPlaceholder(QString());
    switch (cameras_.open()) {
    case FaceCameras::Result::Ok:
        break;
    case FaceCameras::Result::NoneFound:
        ui_->video->setPlaceholder(tr("There is no face camera."));
        break;
    case FaceCameras::Result::Failed:
        ui_->video->setPlaceholder(tr("The face camera cannot be opened. It may be in use."));
        break;
    }
}

void FaceVerify::closeDevices()
{
    if (isReaderOpen_)
        card_.deinithycard();
    isReaderOpen_ = false;
    cameras_.close();
}

void FaceVerify::closeEvent(QCloseEvent* event)
{
    closeDevices();
    QWidget::closeEvent(event);
    Q_EMIT closefacesign();
}

void FaceVerify::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

// --- threads of the cameras -------------------------------------------------------------------------------

void FaceVerify::GetFaceCameraData(void* image, void*, int, int, int, void* context)
{
    static_cast<FaceVerify*>(context)->cameras_.onFrame(FaceRole::colour, image);
}

void FaceVerify::GetFaceCameraDataIR(void* image, void*, int, int, int, void* context)
{
    static_cast<FaceVerify*>(context)->cameras_.onFrame(FaceRole::infrared, image);
}

void FaceVerify::showFrame(const QImage& frame)
{
    watch_.offer(frame);
    ui_->video->SetImageData(frame);
}

// --- pictures and cards -----------------------------------------------------------------------------------

FrameHandle FaceVerify::GetImageSync(std::chrono::seconds timeout)
{
    return capture_.GetImageSync(FaceRole::colour, timeout);
}

QString FaceVerify::imageSave(void* const& image, int cropMode, int colourMode)
{
    return capture_.files().imageSave(image, cropMode, colourMode);
}

void FaceVerify::scannerimg()
{
    scan(FaceRole::colour, colourPath_);
}

void FaceVerify::scannerimgIR()
{
    scan(FaceRole::infrared, infraredPath_);
}

void FaceVerify::scan(FaceRole role, QString& path)
{
    if (!cameras_.canServe(role))
        return;
    begin(tr("Waiting for a picture of the face..."));
    const QString taken = capture_.capture(role);
    if (!taken.isEmpty())
        path = taken;
    end(taken.isEmpty() ? tr("There is no new picture of the face.") : tr("The picture was taken."));
}

void FaceVerify::readidcard()
{
    clearCard(); // nobody is compared with the card of the one before
    begin(tr("Reading the card..."));
    const int type = card_.readhycardinfo();
    end();
    if (type != residentCard) {
        Dialogs::warn(this, tr("Read idcard failed!"));
        return;
    }
    const QStringList texts = card_.gethycardinfo();
    if (texts.size() < FieldCount)
        Dialogs::warn(this, tr("ID card info is empty."));
    else
        showCard(texts);
}

void FaceVerify::clearCard()
{
    cardPortrait_.reset();
    hasCard_ = false;
    for (QLineEdit* box : ui_->frameCard->findChildren<QLineEdit*>())
        box->clear();
    ui_->labelPortrait->clear();
    ui_->labelResult->clear();
}

void FaceVerify::showCard(const QStringList& texts)
{
    const QString& born = texts[Born];
    const std::pair<QLineEdit*, QString> boxes[] = {
        {ui_->editName, texts[Name]},
        {ui_->editGender, texts[Gender]},
        {ui_->editNation, texts[Nation]},
        {ui_->editYear, born.left(4)},
        {ui_->editMonth, born.mid(4, 2)},
        {ui_->editDay, born.right(2)},
        {ui_->editAddress, texts[Address]},
        {ui_->editNumber, texts[Number]},
        {ui_->editDepartment, texts[Department]},
        {ui_->editPeriod, texts[From] + QLatin1Char('-') + texts[To]},
    };
    for (const auto& [box, text] : boxes) {
        box->setText(text);
        box->setCursorPosition(0); // a long one shows its beginning
    }
    const QPixmap picture = portrait_.load(texts[Portrait]);
    if (!picture.isNull())
        ui_->labelPortrait->setPixmap(
            picture.scaled(ui_->labelPortrait->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
    // What is not the user's own file is no portrait of a card, whoever has put it there.
    if (!picture.isNull())
        keepPortrait(texts[Portrait]);
    hasCard_ = true;
}

/// A copy: the file itself is that of the card which any window has read last.
void FaceVerify::keepPortrait(const QString& path)
{
    QFile file(path);
    auto copy = std::make_unique<QTemporaryFile>(QDir::tempPath() + QStringLiteral("/elphoto-XXXXXX.bmp"));
    const bool isOpen = file.open(QIODevice::ReadOnly) && copy->open();
    const QByteArray bytes = isOpen ? file.readAll() : QByteArray();
    if (!bytes.isEmpty() && copy->write(bytes) == bytes.size() && copy->flush())
        cardPortrait_ = std::move(copy);
}

// --- checks -----------------------------------------------------------------------------------------------

/// Says what goes on, at once: what follows may keep the window from painting.
void FaceVerify::begin(const QString& doing)
{
    ui_->labelNote->setText(doing);
    ui_->labelNote->repaint();
}

void FaceVerify::end(const QString& note)
{
    ui_->labelNote->setText(note);
}

bool FaceVerify::isStarted(const FaceLibrary::Run& run)
{
    if (!run.isReady())
        Dialogs::warn(this, tr("The face library cannot be used on this computer!"));
    return run.isReady();
}

int FaceVerify::matchingface(const QString& a, const QString& b) const
{
    return FaceMatch::matchingface(a, b);
}

int FaceVerify::liveface(const QString& path) const
{
    return FaceMatch::liveface(path);
}

void FaceVerify::onFaceVerify()
{
    try {
        verify();
    } catch (...) { // whatever another library throws
        std::fputs("find error,but not found where!\n", stderr);
        end();
    }
}

void FaceVerify::verify()
{
    ui_->labelResult->clear();
    begin(tr("Comparing the faces..."));
    const FaceLibrary::Run run(library_);
    if (isStarted(run)) {
        const int score = matchingface(cardPortrait_ ? cardPortrait_->fileName() : QString(), colourPath_);
        const QString text = score < FaceMatch::samePerson ? tr("Face comparison failed, score:%1")
                                                           : tr("Face comparison success, score:%1");
        ui_->labelResult->setText(text.arg(score));
    }
    end(!hasCard_               ? tr("No card has been read.")
        : colourPath_.isEmpty() ? tr("There is no new picture of the face.")
                                : QString());
}

void FaceVerify::onLiveFace()
{
    ui_->labelResult->clear();
    const FaceLibrary::Run run(library_);
    if (!isStarted(run))
        return;
    colourPath_.clear(); // nobody is judged by the face of the one before
    infraredPath_.clear();
    scannerimg();
    scannerimgIR();
    std::this_thread::sleep_for(pause);
    if (QFile::exists(infraredPath_))
        judgeLife();
}

void FaceVerify::judgeLife()
{
    begin(tr("Looking at the face..."));
    int score = liveface(infraredPath_);
    if (score < FaceMatch::infraredIsSure)
        score = liveface(colourPath_);
    ui_->labelResult->setText(score < FaceMatch::living ? tr("This is not a living face.")
                                                        : tr("This is a living face."));
    end();
}

void FaceVerify::onOneClickFaceVerify()
{
    Dialogs::warn(this,
                  tr("Please confirm that your ID card is in the card reading position, your face is in the "
                     "center of the video screen, and then click the confirm button"));
    colourPath_.clear();
    readidcard();
    scannerimg();
    onFaceVerify();
}

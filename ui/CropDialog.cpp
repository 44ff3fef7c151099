#include "CropDialog.h"

#include "Look.h"
#include "TitleBar.h"
#include "mirvakcamera.h"

#include <QFile>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImageReader>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int longestSide = 2000; // px; enough to see where an edge lies

QImage readPicture(const QString& path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (std::max(size.width(), size.height()) > longestSide)
        reader.setScaledSize(size.scaled(longestSide, longestSide, Qt::KeepAspectRatio));
    return reader.read();
}

PictureEdits::Corners findPage(const QString& path)
{
    MirvakPointF found[4];
    if (MirvakCamera::MirvakPicture_FindPage(QFile::encodeName(path).constData(), found) != MIRVAK_OK)
        return wholePicture();
    PictureEdits::Corners corners;
    std::transform(std::begin(found), std::end(found), corners.begin(), [](const MirvakPointF& corner) {
        return QPointF(double(corner.x), double(corner.y));
    });
    return corners;
}

} // namespace

CropDialog::CropDialog(const QString& path, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), view_(new CropView(this))
{
    setObjectName(QStringLiteral("CropDialog"));
    setWindowTitle(tr("Crop"));
    setWindowModality(Qt::WindowModal);
    auto* title = new TitleBar(this);
    title->SetTitle(windowTitle());
    title->ShowSkinButton(false);
    title->ShowMinimizeButton(false);
    title->ShowMaximizeButton(false);
    connect(title, &TitleBar::clickedclosesign, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(title);
    layout->addWidget(view_, 1);
    layout->addWidget(makeButtons());
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    resize((screen * 2 / 3).expandedTo(minimumSizeHint()).boundedTo(screen));
    read(path);
}

CropDialog::~CropDialog() = default;

QWidget* CropDialog::makeButtons()
{
    auto* panel = new QWidget(this);
    auto* layout = new QHBoxLayout(panel);
    whole_ = new QPushButton(tr("Whole picture"), panel);
    crop_ = new QPushButton(tr("Crop"), panel);
    auto* cancel = new QPushButton(tr("Cancel"), panel);
    whole_->setObjectName(QStringLiteral("cropWhole"));
    crop_->setObjectName(QStringLiteral("cropAccept"));
    cancel->setObjectName(QStringLiteral("cropCancel"));
    layout->addWidget(whole_);
    layout->addStretch(1);
    layout->addWidget(crop_);
    layout->addWidget(cancel);
    Look::dress(*panel);
    whole_->setEnabled(false);
    crop_->setEnabled(false);
    crop_->setDefault(true);
    connect(whole_, &QPushButton::clicked, this, [this] { view_->setCorners(wholePicture()); });
    connect(crop_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(view_, &CropView::changed, this, [this] { crop_->setEnabled(view_->isUsable()); });
    return panel;
}

void CropDialog::read(const QString& path)
{
    const bool isStarted = workers_.start([this, path] {
        const QImage picture = readPicture(path);
        const PictureEdits::Corners page = findPage(path);
        QMetaObject::invokeMethod(
            this,
            [this, picture, page] {
                view_->show(picture, page);
                whole_->setEnabled(!picture.isNull());
                crop_->setFocus(); // it could not take the keyboard before
            },
            Qt::QueuedConnection);
    });
    if (!isStarted)
        QMetaObject::invokeMethod(this, &QDialog::reject, Qt::QueuedConnection);
}

void CropDialog::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Look::background);
    painter.setPen(Look::strip);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

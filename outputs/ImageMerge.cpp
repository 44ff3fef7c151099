#include "ImageMerge.h"

#include "Dialogs.h"
#include "Look.h"
#include "MergedPicture.h"
#include "SavePicture.h"

#include "ui_ImageMerge.h"

#include <QPainter>
#include <QShowEvent>

#include <algorithm>

namespace {

const QString buttonStyle = QStringLiteral("background-color: rgb(8, 115, 140);\ncolor: rgb(255, 255, 255);");
const QColor ground(18, 74, 84);
constexpr int edge = 14;             // px of ground around the result
constexpr int narrowestButton = 110; // px

} // namespace

ImageMerge::ImageMerge(QWidget* parent) : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("ImageMerge"));
    setWindowTitle(tr("Image Merge"));
    setWindowModality(Qt::WindowModal);
}

ImageMerge::~ImageMerge() = default;

void ImageMerge::build()
{
    if (ui_)
        return;
    ui_ = std::make_unique<Ui_ImageMerge>();
    ui_->setupUi(this);
    Look::dress(*ui_->frameFoot);
    for (QPushButton* button : {ui_->buttonSave, ui_->buttonCancel}) {
        button->setStyleSheet(buttonStyle);
        button->setMinimumWidth(std::max(button->sizeHint().width(), narrowestButton));
    }
    ui_->titleBar->SetTitle(windowTitle());
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &QWidget::close);
    connect(ui_->buttonCancel, &QPushButton::clicked, this, &QWidget::close);
    connect(ui_->buttonSave, &QPushButton::clicked, this, &ImageMerge::onSave);
    connect(ui_->sliderSpace, &QSlider::valueChanged, ui_->labelNumber, qOverload<int>(&QLabel::setNum));
    connect(ui_->sliderSpace, &QSlider::valueChanged, this, &ImageMerge::MergePix);
    for (const QRadioButton* layout : {ui_->radioLeftRight, ui_->radioUpDown})
        connect(layout, &QRadioButton::toggled, this, &ImageMerge::MergePix);
}

void ImageMerge::setMergeImage(const QPixmap& first, const QPixmap& second, const QString& savePath)
{
    build();
    forget();
    first_ = first;
    second_ = second;
    savePath_ = savePath;
    if (!first.isNull() && !second.isNull() && !savePath.isEmpty())
        MergePix();
}

void ImageMerge::setMergeImage(const QString& firstPath, const QString& secondPath, const QString& savePath)
{
    build();
    forget();
    firstPath_ = firstPath;
    secondPath_ = secondPath;
    savePath_ = savePath;
    MergePix();
}

/// Reads the files when only their paths are known.
bool ImageMerge::havePictures()
{
    if (first_.isNull() && second_.isNull() && !firstPath_.isEmpty()) {
        first_.load(firstPath_);
        second_.load(secondPath_);
    }
    return !first_.isNull() && !second_.isNull();
}

void ImageMerge::MergePix()
{
    if (!havePictures())
        return;
    const int gap = ui_->sliderSpace->value();
    if (ui_->radioLeftRight->isChecked())
        showResult(MergeLayout::leftRight(first_.size(), second_.size(), gap));
    else if (ui_->radioUpDown->isChecked())
        showResult(MergeLayout::upDown(first_.size(), second_.size(), gap));
    else
        showResult(MergeLayout());
}

void ImageMerge::showResult(const MergeLayout& result)
{
    result_ = result;
    ui_->buttonSave->setEnabled(!result.isEmpty());
    update();
}

void ImageMerge::CalcDispRect(const QRect& area, int width, int height, QRect& place) const
{
    place = QRect();
    if (width <= 0 || height <= 0 || area.isEmpty())
        return;
    const QSize size = QSize(width, height).scaled(area.size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    place = QRect(area.left() + (area.width() - size.width()) / 2,
                  area.top() + (area.height() - size.height()) / 2,
                  size.width(),
                  size.height());
}

void ImageMerge::forget()
{
    for (QPixmap* picture : {&first_, &second_})
        *picture = QPixmap();
    for (QImage* picture : {&firstShown_, &secondShown_})
        *picture = QImage();
    for (QString* path : {&firstPath_, &secondPath_, &savePath_})
        path->clear();
    showResult(MergeLayout());
}

void ImageMerge::onSave()
{
    if (result_.isEmpty())
        return;
    const QImage result = mergedPicture::compose(result_, first_.toImage(), second_.toImage());
    const QString path = savePicture(result, savePath_, "JPG"); // whatever the path's ending
    if (path.isEmpty())
        Dialogs::warn(this, tr("Merge Images failed!"));
    else
        Q_EMIT postSynthesisPath(path);
    close();
}

QString ImageMerge::questionBeforeClosing() const
{
    return result_.isEmpty() ? QString()
                             : tr("The merged picture has not been saved. Close without saving it?");
}

void ImageMerge::setVisible(bool visible)
{
    if (visible)
        build();
    QWidget::setVisible(visible);
}

void ImageMerge::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (event->spontaneous() || !parentWidget() || isMaximized())
        return;
    const QWidget* host = parentWidget()->window();
    resize((host->size() * 4 / 5).expandedTo(minimumSizeHint()));
    move(host->geometry().center() - rect().center());
}

void ImageMerge::closeEvent(QCloseEvent* event)
{
    if (ui_)
        forget();
    QWidget::closeEvent(event);
}

void ImageMerge::paintEvent(QPaintEvent*)
{
    if (!ui_)
        return;
    Look::paintBackground(*this);
    const QRect area(ui_->framePreview->mapTo(this, QPoint()), ui_->framePreview->size());
    QPainter painter(this);
    painter.fillRect(area, ground);
    if (!result_.isEmpty()) {
        paintResult(painter, area.adjusted(edge, edge, -edge, -edge));
        return;
    }
    painter.setPen(Look::text);
    painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, tr("There is no picture to save."));
}

void ImageMerge::paintResult(QPainter& painter, const QRect& area)
{
    if (firstShown_.isNull()) {
        firstShown_ = mergedPicture::forDisplay(first_.toImage());
        secondShown_ = mergedPicture::forDisplay(second_.toImage());
    }
    const QSize size = result_.size;
    QRect place;
    CalcDispRect(area, size.width(), size.height(), place);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.fillRect(place, Qt::white);
    painter.setClipRect(place);
    painter.translate(place.topLeft());
    painter.scale(double(place.width()) / size.width(), double(place.height()) / size.height());
    painter.drawImage(result_.first, firstShown_);
    painter.drawImage(result_.second, secondShown_);
}

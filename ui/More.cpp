#include "More.h"

#include "FunctionButtons.h"
#include "Look.h"
#include "Settings.h"
#include "TextFit.h"
#include "TitleBar.h"

#include "ui_More.h"

#include <QMouseEvent>

#include <algorithm>

namespace {

constexpr QSize wantedSize(800, 600);
constexpr int atTheSides = 54;   // px: frame, margins and a scroll bar
constexpr int columnPitch = 122; // px
constexpr int mostColumns = 6;

QString boxStyle(const QString& folder1, const QString& folder2, const char* identifier)
{
    static const QString style =
        QStringLiteral("QCheckBox{ border-radius: 5px; min-width:120px; min-height:120px;"
                       "image: url(:/images/%1/images/%2/%3.png);}"
                       "QCheckBox:hover{image: url(:/images/%1/images/%2/%3.png);"
                       "border-image: url(:/images/common/images/common/hover.png);}"
                       "QCheckBox:pressed{image: url(:/images/%1/images/%2/%3.png);"
                       "border-image: url(:/images/common/images/common/pressed.png);}");
    return style.arg(folder1, folder2, QLatin1String(identifier));
}

/// `font` made so small that two lines find room below a picture and no word of `text` is wider than `width`.
QFont fitting(QFont font, const QString& text, int width)
{
    qreal size = font.pointSizeF() * 0.85;
    do {
        font.setPointSizeF(size);
        size *= 0.95;
    } while (TextFit::longestWord(text, QFontMetrics(font)) > width && size > 5);
    return font;
}

} // namespace

More::More(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), readsPictures_(settings::appLanguage.read() == 0)
{
    setWindowModality(Qt::WindowModal);
    setFixedSize(wantedSize);
}

void More::setVisible(bool visible)
{
    if (visible) {
        build();
        setFixedSize(wantedSize); // a small screen may have cut it down the last time
    }
    QWidget::setVisible(visible);
}

void More::build()
{
    if (ui_)
        return;
    ui_ = std::make_unique<Ui_More>();
    ui_->setupUi(this);
    makeTitleBar();
    boxes_ = {ui_->checkCapture,
              ui_->checkDocument,
              ui_->checkBarcode,
              ui_->checkSynthesis,
              ui_->checkCardSynthesis,
              ui_->checkVideoCapture,
              ui_->checkContinuousShooting,
              ui_->checkOcr,
              ui_->checkIdCardReader,
              ui_->checkPrint,
              ui_->checkPdf,
              ui_->checkPdfEx,
              ui_->checkSign,
              ui_->checkFingerprint,
              ui_->checkBookscan,
              ui_->checkFaceVerify,
              ui_->checkLaohua};
    // The ticks start as the bar starts: with the default buttons, whatever is stored.
    for (int i = 0; i < boxes_.size(); ++i)
        prepareBox(i);
    captionBoxes();
    arrange();
}

More::~More() = default;

void More::makeTitleBar()
{
    titleBar_ = new TitleBar(ui_->widgetTitle);
    connect(titleBar_, &TitleBar::clickedclosesign, this, &QWidget::close);
    titleBar_->SetTitle(tr("More"));
    titleBar_->ShowMaximizeButton(false);
    titleBar_->ShowMinimizeButton(false);
    titleBar_->ShowSkinButton(false);
}

void More::prepareBox(int index)
{
    QCheckBox* box = boxes_[index];
    box->setChecked(functionButtons::defaultMask >> index & 1);
    // The pictures are the same in every language; the name below them and the tool tip follow it.
    const QString folder = QStringLiteral("zh");
    box->setStyleSheet(boxStyle(folder, folder, functionButtons::identifiers.at(std::size_t(index))));
    box->setAccessibleName(functionButtons::caption(index));
    box->setToolTip(functionButtons::caption(index));
    connect(box, &QCheckBox::clicked, this, [=](bool checked) { Q_EMIT displayCheckBox(index, checked); });
    connect(box, &QCheckBox::stateChanged, this, [=](int state) { Q_EMIT displayCheckBox(index, state); });
}

void More::captionBoxes()
{
    labels_ = {ui_->labelCapture,
               ui_->labelDocument,
               ui_->labelBarcode,
               ui_->labelSynthesis,
               ui_->labelCardSynthesis,
               ui_->labelVideoCapture,
               ui_->labelContinuousShooting,
               ui_->labelOcr,
               ui_->labelIdCardReader,
               ui_->labelPrint,
               ui_->labelPdf,
               ui_->labelPdfEx,
               ui_->labelSign,
               ui_->labelFingerprint,
               ui_->labelBookscan,
               ui_->labelFaceVerify,
               ui_->labelLaohua};
    for (int i = 0; i < labels_.size(); ++i) {
        const QString text = readsPictures_ ? QString() : functionButtons::caption(i);
        labels_[i]->setFont(fitting(font(), text, labels_[i]->maximumWidth()));
        labels_[i]->setText(text);
    }
}

/// In as many columns as the width has room for; each box with its name below it.
void More::arrange()
{
    const int columns = std::clamp((width() - atTheSides) / columnPitch, 1, mostColumns);
    if (!ui_ || columns == columns_)
        return;
    columns_ = columns;
    QGridLayout& grid = *ui_->layoutBoxes;
    for (int i = 0; i < boxes_.size(); ++i) {
        grid.removeWidget(boxes_[i]);
        grid.removeWidget(labels_[i]);
        grid.addWidget(boxes_[i], i / columns * 2, i % columns);
        grid.addWidget(labels_[i], i / columns * 2 + 1, i % columns);
    }
}

void More::resizeEvent(QResizeEvent*)
{
    arrange();
}

void More::paintEvent(QPaintEvent*)
{
    titleBar_->resize(ui_->widgetTitle->size());
    Look::paintBackground(*this);
}

void More::mousePressEvent(QMouseEvent*) {}

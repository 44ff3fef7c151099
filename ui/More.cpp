#include "More.h"

#include "FunctionButtons.h"
#include "Look.h"
#include "Settings.h"
#include "TextFit.h"
#include "TitleBar.h"

#include "ui_More.h"

#include <QMouseEvent>

namespace {

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
    setFixedSize(800, 600);
}

void More::setVisible(bool visible)
{
    if (visible)
        build();
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
    const QList<QLabel*> labels{ui_->labelCapture,
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
    for (int i = 0; i < labels.size(); ++i) {
        const QString text = readsPictures_ ? QString() : functionButtons::caption(i);
        labels[i]->setFont(fitting(font(), text, labels[i]->maximumWidth()));
        labels[i]->setText(text);
    }
}

void More::paintEvent(QPaintEvent*)
{
    titleBar_->resize(ui_->widgetTitle->size());
    Look::paintBackground(*this);
}

void More::mousePressEvent(QMouseEvent*) {}

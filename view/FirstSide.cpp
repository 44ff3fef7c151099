#include "FirstSide.h"

#include "Anchor.h"
#include "ViewOverlay.h"

#include <QPainter>
#include <QPushButton>
#include <QShortcut>

namespace {

constexpr int edge = 6;        // px around the picture
constexpr int button = 24;     // px
constexpr int share = 4;       // of the preview, in both directions
constexpr int aboveNotes = 80; // px that the notices need at the lower edge

} // namespace

FirstSide::FirstSide(QWidget& view) : QWidget(&view), close_(new QPushButton(QStringLiteral("\u00d7"), this))
{
    setObjectName(QStringLiteral("FirstSide"));
    setAccessibleName(tr("First side"));
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_NoMousePropagation);
    close_->setObjectName(QStringLiteral("buttonGiveUpMerge"));
    close_->setAccessibleName(tr("Give up the merge"));
    close_->setToolTip(tr("Give up the merge (Esc)"));
    close_->setStyleSheet(QStringLiteral("QPushButton{background-color:rgba(0,0,0,150);color:white;"
                                         "border:none;border-radius:4px;}"
                                         "QPushButton:hover{background-color:rgb(190,40,40);}"
                                         "QPushButton:focus{border:2px solid rgb(255,213,79);}"));
    close_->setFixedSize(button, button);
    hide();
    new Anchor(*this, Qt::AlignBottom | Qt::AlignRight, {10, Anchor::belowTools, 10, aboveNotes});
    auto* escape = new QShortcut(Qt::Key_Escape, this);
    connect(escape, &QShortcut::activated, this, &FirstSide::givenUp);
    connect(close_, &QPushButton::clicked, this, &FirstSide::givenUp);
}

void FirstSide::showPicture(const QPixmap& picture)
{
    picture_ = picture;
    if (close_->hasFocus())
        parentWidget()->setFocus(); // else the keyboard would wander off to another part of the window
    setVisible(!picture.isNull());
    raise();
    update();
}

QSize FirstSide::sizeHint() const
{
    const QSize most = parentWidget()->size() / share;
    const QSize picture = picture_.size().scaled(most, Qt::KeepAspectRatio).expandedTo({button, button});
    return picture + QSize(2 * edge, 2 * edge + fontMetrics().height());
}

QRect FirstSide::pictureRect() const
{
    return rect().adjusted(edge, edge, -edge, -edge - fontMetrics().height());
}

void FirstSide::resizeEvent(QResizeEvent*)
{
    close_->move(pictureRect().right() + 1 - button, pictureRect().top());
}

void FirstSide::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    overlay::drawBox(painter, rect());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(pictureRect(), picture_);
    painter.setPen(Qt::white);
    painter.drawText(rect().adjusted(0, pictureRect().bottom(), 0, 0), Qt::AlignCenter, tr("First side"));
}

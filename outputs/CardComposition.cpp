#include "CardComposition.h"

#include "CaptureDesk.h"
#include "InputShield.h"
#include "Settings.h"

#include <QPointer>

namespace {

constexpr std::chrono::seconds frameTimeout(10);

} // namespace

CardComposition::CardComposition(CaptureDesk& desk, ShowPair show, QObject* parent)
    : QObject(parent), desk_(desk), show_(std::move(show))
{
}

void CardComposition::takeShot()
{
    if (isTaking_ || !desk_.mayCompose())
        return;
    isTaking_ = true;
    const QPointer<CardComposition> self(this);
    {
        const InputShield shield; // its end lets events in
        takeSide();
    }
    if (self)
        isTaking_ = false;
}

void CardComposition::takeSide()
{
    const QString path = captureFile();
    if (!path.isEmpty() && isPending())
        finish(QPixmap(path));
    else if (!path.isEmpty())
        keepFirst(QPixmap(path));
}

QString CardComposition::captureFile()
{
    const FrameHandle frame = desk_.takeFrame(frameTimeout);
    if (!frame) {
        desk_.showNotice(tr("The camera delivers no picture."));
        return {};
    }
    ConfigSettings store;
    QString path =
        desk_.saveCropped(frame.get(), settings::deskew.read(store), settings::scanType.read(store));
    desk_.addThumbnail(path);
    return path;
}

void CardComposition::keepFirst(const QPixmap& first)
{
    if (first.isNull()) {
        desk_.showNotice(tr("The picture cannot be read back. Please try again."));
        return;
    }
    setFirst(first);
    desk_.showNotice(
        tr("The first picture is taken. Lay the second side under the camera and press the button again."));
}

void CardComposition::finish(const QPixmap& second)
{
    const QPixmap first = first_;
    setFirst(QPixmap());
    desk_.showNotice(QString());
    show_(first, second, desk_.freeImagePath());
}

void CardComposition::giveUp()
{
    if (!isPending())
        return;
    setFirst(QPixmap());
    desk_.showNotice(tr("The merge was given up. The first picture stays in the list."));
}

void CardComposition::setFirst(const QPixmap& first)
{
    first_ = first;
    desk_.setMergePending(isPending());
    desk_.enableTools(!isPending());
    Q_EMIT firstSideChanged(first);
}

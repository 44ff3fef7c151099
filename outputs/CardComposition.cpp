#include "CardComposition.h"

#include "CaptureDesk.h"
#include "Settings.h"

#include <QCoreApplication>
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
    const QString path = captureFile();
    if (!path.isEmpty() && isPending())
        finish(QPixmap(path));
    else if (!path.isEmpty())
        keepFirst(QPixmap(path));
    // Clicks of the meantime still wait in the queue: they come in here, where they do nothing.
    const QPointer<CardComposition> self(this);
    QCoreApplication::processEvents();
    if (self)
        isTaking_ = false;
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
    first_ = first;
    desk_.setMergePending(true);
    desk_.enableTools(false);
    desk_.showNotice(
        tr("The first picture is taken. Lay the second side under the camera and press the button again."));
}

void CardComposition::finish(const QPixmap& second)
{
    const QPixmap first = std::exchange(first_, QPixmap());
    desk_.setMergePending(false);
    desk_.enableTools(true);
    desk_.showNotice(QString());
    show_(first, second, desk_.freeImagePath());
}

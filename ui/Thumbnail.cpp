#include "Thumbnail.h"

#include "EntryActions.h"
#include "FileDrag.h"
#include "ListedFiles.h"
#include "NamedFiles.h"
#include "NoticeBar.h"
#include "ThumbnailDelegate.h"
#include "ThumbnailDeletion.h"
#include "ThumbnailList.h"
#include "ThumbnailLoader.h"

#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

#include <cstdio>

namespace {

constexpr int noticeMs = 8000; // names want to be read

} // namespace

Thumbnail::Thumbnail(QWidget* parent)
    : QWidget(parent), title_(new QLabel(tr("Thumbnail"), this)), list_(new ThumbnailList(this)),
      menu_(new QMenu(this)), notice_(new NoticeBar(this)),
      files_(new ListedFiles([this] { return list_->pictureRoom(); }, this)),
      deletion_(new ThumbnailDeletion(*list_, *files_, this)),
      actions_(new EntryActions(*list_, *files_, *this))
{
    title_->setObjectName(QStringLiteral("LabelThumbnailTitle"));
    title_->setAlignment(Qt::AlignCenter);
    title_->setMargin(4);
    list_->setAccessibleName(tr("Produced files"));
    list_->setItemDelegate(new ThumbnailDelegate(*this));
    list_->viewport()->installEventFilter(this);
    notice_->setObjectName(QStringLiteral("noticeBar"));
    setFocusPolicy(Qt::StrongFocus); // the list itself takes none
    setAccessibleName(tr("Thumbnail"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(title_);
    layout->addWidget(list_);
    layout->addWidget(notice_);
    layout->addWidget(deletion_->offer());

    connect(this, &Thumbnail::updateui, list_->viewport(), QOverload<>::of(&QWidget::update));
    connect(list_, &QWidget::customContextMenuRequested, this, &Thumbnail::onPopupCustomMenu);
    connect(list_, &QListWidget::itemDoubleClicked, this, &Thumbnail::onItemDoubleClicked);
    connect(new FileDrag(*list_, *this), &FileDrag::dropped, this, [this](const QStringList& paths) {
        for (const QString& path : paths)
            AddImage(path, -1);
    });
    connectFiles();
}

Thumbnail::~Thumbnail() = default;

void Thumbnail::connectFiles()
{
    connect(files_, &ListedFiles::pictureRead, this, [this](const QString& path, const QImage& picture) {
        list_->setPicture(list_->rowOfExactly(path), QPixmap::fromImage(picture));
    });
    connect(files_, &ListedFiles::refused, this, [this](const QString& path) {
        list_->takeEntry(list_->rowOfExactly(path));
        leaveOut(path);
    });
    connect(files_, &ListedFiles::gone, this, [this](const QString& path) {
        list_->takeEntry(list_->rowOfExactly(path));
        actions_->forget(path);
        if (keepsFiles_)
            say(tr("%1 is no longer there.").arg(namedFiles({path})));
    });
    connect(deletion_, &ThumbnailDeletion::noticed, this, &Thumbnail::say);
    connect(deletion_, &ThumbnailDeletion::restored, this, &Thumbnail::updateui);
    connect(actions_, &EntryActions::noticed, this, &Thumbnail::say);
    connect(actions_, &EntryActions::edited, this, [this] { isEditLast_ = true; });
    connect(notice_, &NoticeBar::expired, this, [this] { leftOut_.clear(); });
}

/// Nothing to say leaves the notice before.
void Thumbnail::say(const QString& text)
{
    if (text.isEmpty())
        return;
    leftOut_.clear();
    notice_->say(text, noticeMs);
}

/// Names it together with those that were left out just before.
void Thumbnail::leaveOut(const QString& path)
{
    std::fprintf(stderr, "no readable picture in %s\n", qUtf8Printable(path));
    QStringList all = leftOut_;
    all.append(path);
    say(tr("Not listed, because no picture can be read: %1").arg(namedFiles(all)));
    leftOut_ = all;
}

void Thumbnail::AddImage(const QString& path, int index)
{
    if (GetIndex(path) >= 0)
        return;
    const QSize size = ThumbnailLoader::sizeOf(path);
    if (size.isEmpty())
        return leaveOut(path);
    QPixmap blank(size.scaled(list_->pictureRoom(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    blank.fill(QColor(255, 255, 255, 40));
    AddImage(blank, path, index);
    files_->followPicture(path);
}

void Thumbnail::AddImage(QPixmap& picture, const QString& path, int index)
{
    if (picture.isNull() || GetIndex(path) >= 0)
        return;
    files_->follow(path);
    list_->insertEntry(picture, path, index);
    Q_EMIT updateui();
}

int Thumbnail::GetIndex(const QString& path) const
{
    return list_->rowOf(path);
}

QStringList Thumbnail::GetFilePaths() const
{
    return list_->paths();
}

int Thumbnail::Count() const
{
    return list_->count();
}

void Thumbnail::RemoveItem(int index, bool deleteFile)
{
    const QString path = list_->pathAt(index);
    if (!path.isEmpty())
        remove({path}, deleteFile);
}

void Thumbnail::remove(const QStringList& paths, bool deleteFiles)
{
    isEditLast_ = isEditLast_ && !deleteFiles;
    if (deleteFiles)
        deletion_->remove(paths);
    for (const QString& path : paths) {
        if (!deleteFiles) {
            files_->forget(path);
            list_->takeEntry(list_->rowOfExactly(path));
        }
        if (list_->rowOfExactly(path) < 0)
            actions_->forget(path);
    }
}

void Thumbnail::clearthumbnail(bool deleteFiles)
{
    remove(list_->paths(), deleteFiles);
}

void Thumbnail::onClear(bool deleteFiles)
{
    clearthumbnail(deleteFiles);
}

void Thumbnail::SetIconSize(int width, int height)
{
    list_->setEntrySize(QSize(width, height));
}

void Thumbnail::becomePageList()
{
    keepsFiles_ = true;
    list_->becomePageList();
}

void Thumbnail::onFileChanged(const QString& path)
{
    files_->check(path);
}

void Thumbnail::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    actions_->place();
    list_->viewport()->update();
}

void Thumbnail::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    actions_->place();
    list_->viewport()->update();
}

#include "ThumbnailDeletion.h"

#include "DeletedFiles.h"
#include "ListedFiles.h"
#include "NamedFiles.h"
#include "NoticeBar.h"
#include "ThumbnailList.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr int offerMs = 10000;

} // namespace

struct ThumbnailDeletion::Entry
{
    QString path;
    int row; ///< when it was taken out; put back in reverse order each finds its place
    std::unique_ptr<QListWidgetItem> item;
};

struct ThumbnailDeletion::Deletion
{
    DeletedFiles files;
    std::vector<Entry> entries;
};

ThumbnailDeletion::ThumbnailDeletion(ThumbnailList& list, ListedFiles& files, QWidget* strip)
    : QObject(strip), list_(list), files_(files), offer_(new NoticeBar(strip, tr("Undo")))
{
    offer_->setObjectName(QStringLiteral("undoBar"));
    connect(offer_, &NoticeBar::pressed, this, &ThumbnailDeletion::undo);
    connect(offer_, &NoticeBar::expired, this, [this] { last_.reset(); });
}

ThumbnailDeletion::~ThumbnailDeletion() = default;

void ThumbnailDeletion::remove(const QStringList& paths)
{
    auto deletion = std::make_unique<Deletion>();
    QStringList kept;
    for (const QString& path : paths) {
        const int row = list_.rowOfExactly(path);
        if (row < 0)
            continue;
        if (deletion->files.take(path)) {
            files_.forget(path);
            deletion->entries.push_back({path, row, list_.takeEntry(row)});
        } else if (QFileInfo::exists(path)) {
            kept.append(path);
        } else {
            files_.check(path);
        }
    }
    if (!deletion->entries.empty()) {
        last_ = std::move(deletion);
        makeOffer();
    }
    if (!kept.isEmpty())
        Q_EMIT noticed(tr("Could not be deleted: %1").arg(namedFiles(kept)));
}

void ThumbnailDeletion::makeOffer()
{
    offer_->say(tr("%n file(s) deleted", nullptr, int(last_->entries.size())), offerMs);
}

void ThumbnailDeletion::undo()
{
    if (!last_)
        return;
    offer_->dismiss();
    list_.clearSelection();
    std::vector<Entry> entries = std::exchange(last_->entries, {});
    QStringList renamed;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        const QString path = last_->files.putBack(entry->path);
        if (path.isEmpty()) {
            last_->entries.push_back(std::move(*entry));
            continue;
        }
        if (path != entry->path)
            renamed.prepend(path);
        restore(std::move(*entry), path);
    }
    Q_EMIT restored();
    if (!renamed.isEmpty())
        Q_EMIT noticed(
            tr("Brought back as %1: other files have the old names now.").arg(namedFiles(renamed)));
    keepWhatIsLost();
}

void ThumbnailDeletion::restore(Entry entry, const QString& path)
{
    if (list_.rowOfExactly(path) < 0)
        list_.putBack(std::move(entry.item), entry.row, path);
    files_.follow(path);
    files_.check(path);
}

/// What could not be brought back now can be asked for once more.
void ThumbnailDeletion::keepWhatIsLost()
{
    std::vector<Entry>& entries = last_->entries;
    if (entries.empty())
        return last_.reset();
    std::reverse(entries.begin(), entries.end());
    QStringList paths;
    for (const Entry& entry : entries)
        paths.append(entry.path);
    makeOffer();
    Q_EMIT noticed(tr("Could not be brought back: %1").arg(namedFiles(paths)));
}

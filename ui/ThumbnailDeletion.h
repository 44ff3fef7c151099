#pragma once

#include <QObject>
#include <QStringList>

#include <memory>

class ListedFiles;
class NoticeBar;
class QWidget;
class ThumbnailList;

/// Deletes listed files with their entries and offers to take the last deletion back: for ten seconds, or
/// until the next one. After that, and with this object, the files are gone for good. GUI thread only.
class ThumbnailDeletion : public QObject
{
    Q_OBJECT

public:
    /// `list` and `files` are borrowed for the life of this object. The offer is a child of `strip`.
    ThumbnailDeletion(ThumbnailList& list, ListedFiles& files, QWidget* strip);
    ~ThumbnailDeletion() override;

    NoticeBar* offer() const { return offer_; } ///< to be laid out

    /// A file that cannot be deleted keeps its entry.
    void remove(const QStringList& paths);
    /// Brings the files of the last deletion back, each entry to its row. None that can be taken back does
    /// nothing.
    void undo();
    bool canUndo() const { return last_ != nullptr; }

Q_SIGNALS:
    void noticed(const QString& text); ///< something for the user to read
    void restored();                   ///< entries are back in the list

private:
    struct Entry;
    struct Deletion;
    void makeOffer();
    void restore(Entry entry, const QString& path);
    void keepWhatIsLost();

    ThumbnailList& list_;
    ListedFiles& files_;
    NoticeBar* offer_;
    std::unique_ptr<Deletion> last_; ///< null when there is nothing to be taken back
};

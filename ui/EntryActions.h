#pragma once

#include <QObject>
#include <QStringList>

class EntryBar;
class EntryName;
class ListedFiles;
class PictureEdits;
class QKeyEvent;
class QWidget;
class ThumbnailList;

/// What the user does with listed files after the capture: the bar over the entry under the mouse or, when
/// the keys are used, over the current one, the keys themselves, the field for a name and the window for a
/// crop. GUI thread only.
class EntryActions : public QObject
{
    Q_OBJECT

public:
    /// `list` and `files` are borrowed for the life of this object; `strip` has the keyboard's focus and owns
    /// it.
    EntryActions(ThumbnailList& list, ListedFiles& files, QWidget& strip);
    ~EntryActions() override;

    /// @return whether the key was one of these; undo is not.
    bool press(const QKeyEvent& key);
    /// Takes the last step back of each selected entry. @return false when there is none
    bool undo();
    /// The entry has gone, and with it what was kept of its file.
    void forget(const QString& path);
    /// Entries have come, gone or moved, or the keyboard has.
    void place();

Q_SIGNALS:
    void noticed(const QString& text); ///< something for the user to read
    void edited();                     ///< a step that undo() takes back

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectBar();
    void connectName();
    void follow(const QString& path);
    QStringList chosen() const;
    QString current() const;
    bool canEdit(const QString& path) const;
    void rename(const QString& path);
    void turn(const QStringList& paths, int quarters);
    void straighten(const QStringList& paths);
    void crop(const QString& path);

    ThumbnailList& list_;
    QWidget& strip_;
    PictureEdits* edits_;
    EntryBar* bar_;
    EntryName* name_;
    QString under_;        ///< the entry under the mouse
    QString over_;         ///< the entry that the bar lies over
    bool isByKey_ = false; ///< the keys were used last, not the mouse
};

#pragma once

#include "HiddenFile.h"
#include "Workers.h"

#include <QObject>
#include <QPointF>

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <vector>

class ListedFiles;
class ThumbnailList;

/// Changes listed files after the capture, and takes it back step by step, to what they were. A picture is
/// made on another thread, one after the other, and then takes the place of the old one under the same name;
/// the old one lies hidden until its entry goes or the program ends. GUI thread only.
class PictureEdits : public QObject
{
    Q_OBJECT

public:
    using Corners = std::array<QPointF, 4>; ///< clockwise from the top left, in parts of the width and height

    /// `list` and `files` are borrowed for the life of this object.
    PictureEdits(ThumbnailList& list, ListedFiles& files, QObject* parent);
    ~PictureEdits() override; ///< waits for the picture that is being made and drops the rest

    static bool isPicture(const QString& path);   ///< by its name: of a kind that can be changed
    void turn(const QString& path, int quarters); ///< clockwise
    void straighten(const QString& path);
    void cut(const QString& path, const Corners& corners);
    /// Another name before the same extension. @return false when the user must choose another; it was said
    /// why
    bool rename(const QString& path, const QString& name);
    void undo(const QString& path);
    bool canUndo(const QString& path) const;
    bool isBusy(const QString& path) const;
    /// The entry has gone: so does what was kept of it.
    void forget(const QString& path);

Q_SIGNALS:
    void noticed(const QString& text); ///< something for the user to read
    void changed(const QString& path); ///< what can be done with the entry, or its name, to this one

private:
    /// What a file is told by.
    struct Stamp
    {
        quint64 number = 0;
        qint64 bytes = -1;
        qint64 seconds = 0, nanoseconds = 0;
        bool operator==(const Stamp& other) const;
    };
    struct Step
    {
        QString oldPath;   ///< of a new name; empty otherwise
        HiddenFile before; ///< of a new picture
        Stamp after;
    };
    using Write = std::function<int(const char* from, const char* to)>;
    struct Job
    {
        QString path;
        Write write; ///< none: the last step is taken back
        Stamp before;
    };
    static Stamp stampOf(const QString& path);
    static int make(const QString& path, const Write& write, HiddenFile& made);
    void ask(const QString& path, Write write);
    void startNext();
    void finish(int code, HiddenFile& made);
    void put(const Job& job, HiddenFile& made);
    bool swap(const QString& path, HiddenFile& other);
    void takeBack(const QString& path);
    bool giveName(const QString& path, const QString& newPath);
    QString objection(const QString& path, const QString& newPath, const QString& name) const;

    ThumbnailList& list_;
    ListedFiles& files_;
    std::map<QString, std::vector<Step>> steps_;
    std::deque<Job> jobs_; ///< the first one is being done
    bool isWorking_ = false;
    Workers workers_;
};

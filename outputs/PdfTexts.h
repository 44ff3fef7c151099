#pragma once

#include "HeldFile.h"
#include "PdfFile.h"
#include "Workers.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <memory>

class CaptureDesk;
class Job;
class MirvakOCR;

/// Makes PDF files searchable: the text of their pictures is recognised behind, one page after the other, and
/// the file is replaced by one in which it lies invisibly over them. Until then, and when that is cancelled,
/// fails or is cut off by the program's end, the PDF stays as it is, whole and without text. GUI thread only.
class PdfTexts : public QObject
{
    Q_OBJECT

public:
    /// `desk` and `camera` are borrowed until giveUp() or the end of this object. `modelDirectory`: where the
    /// recogniser's models lie.
    PdfTexts(CaptureDesk& desk, MirvakCamera& camera, QString modelDirectory, QObject* parent = nullptr);
    ~PdfTexts() override; ///< as giveUp()

    /// When the user wants it: the PDF was just made of these pictures in this form. Several wait for each
    /// other.
    void add(const QString& pdf, const QStringList& pictures, const pdfFile::Form& form);
    bool isRunning() const { return job_ != nullptr; }
    /// Stops within a fraction of a second and forgets what waits. Returns when nothing runs any more.
    void giveUp();

private:
    enum class End {
        done,
        noText,  ///< nothing could be read in the pictures
        stopped, ///< as was wished
        noReader,
        changed, ///< the PDF or its pictures are no longer what they were
        notWritten,
    };
    struct Task
    {
        HeldFile pdf;
        QString path; ///< of the PDF
        HeldFiles pictures;
        pdfFile::Form form;
    };

    void startNext();
    void watch();
    void finish(End end);
    End work(MirvakOCR& engine, const Task& task, Job& job);
    End recognise(MirvakOCR& engine, const Task& task, Job& job, pdfFile::Texts& texts) const;
    static QString noticeOf(End end);

    CaptureDesk& desk_;
    MirvakCamera& camera_;
    QString models_;
    std::deque<std::shared_ptr<Task>> waiting_;
    QTimer watch_; ///< carries progress and stop between the engine and the job
    std::shared_ptr<Job> job_;
    std::unique_ptr<MirvakOCR> engine_; ///< of the recognition that runs
    Workers workers_;                   ///< last: they use the engine
};

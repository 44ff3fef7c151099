#pragma once

#include "Job.h"
#include "PdfFile.h"
#include "Workers.h"

#include <QObject>

#include <memory>

/// Writes one PDF at a time on a thread of its own, so that the window lives on meanwhile. GUI thread only.
class PdfWriting : public QObject
{
    Q_OBJECT

public:
    explicit PdfWriting(MirvakCamera& camera, QObject* parent = nullptr) : QObject(parent), camera_(camera) {}
    ~PdfWriting() override { giveUp(); }

    bool isRunning() const { return job_ != nullptr; }
    /// Not while one is being written. @return how far it has come, and how to cancel it; held until done()
    std::shared_ptr<Job> start(const QStringList& pictures, const QString& path, const pdfFile::Form& form);
    /// Cancels the one that is being written, and waits for its end; done() comes all the same.
    void giveUp();

Q_SIGNALS:
    void done(const pdfFile::Result& result);

private:
    void report(const pdfFile::Result& result);
    void finish();

    MirvakCamera& camera_;
    std::shared_ptr<Job> job_;
    Workers worker_; // last: it uses the others
};

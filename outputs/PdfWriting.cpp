#include "PdfWriting.h"

std::shared_ptr<Job>
PdfWriting::start(const QStringList& pictures, const QString& path, const pdfFile::Form& form)
{
    job_ = std::make_shared<Job>();
    const bool isStarted = worker_.start([this, job = job_, pictures, path, form] {
        report(pdfFile::write(camera_, pictures, path, job.get(), form));
    });
    if (!isStarted)
        report({path, {}, MIRVAK_NO_MEMORY});
    return job_;
}

void PdfWriting::report(const pdfFile::Result& result)
{
    const auto tell = [this, result] {
        finish();
        Q_EMIT done(result);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void PdfWriting::finish()
{
    worker_.finish();
    job_.reset();
}

void PdfWriting::giveUp()
{
    if (job_)
        job_->stop();
    finish();
}

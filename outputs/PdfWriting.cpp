#include "PdfWriting.h"

std::shared_ptr<Job>
PdfWriting::start(const QStringList& pictures, const QString& path, const pdfFile::Form& form)
{
    job_ = std::make_shared<Job>();
    worker_ = std::thread([this, pictures, path, form] {
        const pdfFile::Result result = pdfFile::write(camera_, pictures, path, job_.get(), form);
        const auto report = [this, result] {
            finish();
            Q_EMIT done(result);
        };
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    });
    return job_;
}

void PdfWriting::finish()
{
    if (worker_.joinable())
        worker_.join();
    job_.reset();
}

void PdfWriting::giveUp()
{
    if (job_)
        job_->stop();
    finish();
}

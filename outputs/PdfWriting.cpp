#include "PdfWriting.h"

void PdfWriting::start(const QStringList& pictures, const QString& path)
{
    worker_ = std::thread([this, pictures, path] {
        const pdfFile::Result result = pdfFile::write(camera_, pictures, path);
        const auto report = [this, result] {
            finish();
            Q_EMIT done(result);
        };
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    });
}

void PdfWriting::finish()
{
    if (worker_.joinable())
        worker_.join();
}

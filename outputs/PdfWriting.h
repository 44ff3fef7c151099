#pragma once

#include "PdfFile.h"

#include <QObject>

#include <thread>

/// Writes one PDF at a time on a thread of its own, so that the window lives on meanwhile. GUI thread only.
class PdfWriting : public QObject
{
    Q_OBJECT

public:
    explicit PdfWriting(MirvakCamera& camera, QObject* parent = nullptr) : QObject(parent), camera_(camera) {}
    ~PdfWriting() override { finish(); }

    bool isRunning() const { return worker_.joinable(); }
    /// Not while one is being written.
    void start(const QStringList& pictures, const QString& path);
    /// Waits for the one that is being written; done() comes all the same.
    void finish();

Q_SIGNALS:
    void done(const pdfFile::Result& result);

private:
    MirvakCamera& camera_;
    std::thread worker_;
};

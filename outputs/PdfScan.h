#pragma once

#include <QCoreApplication>

class CaptureDesk;
class MirvakCamera;

/// One capture, and a PDF of it beside it, a page for each picture that it gives. GUI thread only.
class PdfScan
{
    Q_DECLARE_TR_FUNCTIONS(PdfScan)

public:
    /// Both are borrowed for the life of this object.
    PdfScan(CaptureDesk& desk, MirvakCamera& camera) : desk_(desk), camera_(camera) {}

    /// Behind the PDF button. Waits at most 10 seconds for the frame. The capture stays on the disk whatever
    /// becomes of the PDF; the strip lists both.
    void scan();

private:
    QStringList capture();

    CaptureDesk& desk_;
    MirvakCamera& camera_;
};

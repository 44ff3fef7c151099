#pragma once

#include <QCoreApplication>

class CaptureDesk;
class MirvakCamera;
class PdfTexts;

/// One capture, and a PDF of it beside it, a page for each picture that it gives. GUI thread only.
class PdfScan
{
    Q_DECLARE_TR_FUNCTIONS(PdfScan)

public:
    /// All are borrowed for the life of this object.
    PdfScan(CaptureDesk& desk, MirvakCamera& camera, PdfTexts& texts)
        : desk_(desk), camera_(camera), texts_(texts)
    {
    }

    /// Behind the PDF button. Waits at most 10 seconds for the frame. The capture stays on the disk whatever
    /// becomes of the PDF; the strip lists both.
    void scan();

private:
    QStringList capture();

    CaptureDesk& desk_;
    MirvakCamera& camera_;
    PdfTexts& texts_;
};

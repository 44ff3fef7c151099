#pragma once

#include <QObject>

class CaptureDesk;
class PdfEx;
class PdfTexts;

/// Puts the multi-page PDF dialog to work at the main window: opens it under the guard of captures, makes its
/// scans, lists its PDF. GUI thread only.
class PdfExControl : public QObject
{
    Q_OBJECT

public:
    /// All are borrowed for the life of this object.
    PdfExControl(CaptureDesk& desk, PdfEx& dialog, PdfTexts& texts, QObject* parent = nullptr);

    /// Behind the button. The arguments are those of PdfEx::ShowPdf(). A dialog that shows comes
    /// forward.
    void open(void* device, int width, int height, int rotation, int resolutionIndex);

private:
    void scan();

    CaptureDesk& desk_;
    PdfEx& dialog_;
};

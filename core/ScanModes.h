#pragma once

#include <QObject>

class CaptureDesk;

/// The capture commands. GUI thread only.
class ScanModes : public QObject
{
    Q_OBJECT

public:
    /// `desk` is borrowed for the life of this object.
    explicit ScanModes(CaptureDesk& desk, QObject* parent = nullptr) : QObject(parent), desk_(desk) {}

    /// One picture, with the colour processing of the settings.
    void scan();
    /// One picture of a document, always with white paper and the blue seal strengthened.
    void scanDocument();

private:
    void capture(int colourMode);

    CaptureDesk& desk_;
};

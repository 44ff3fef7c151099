#pragma once

#include "CompositeCapture.h"

#include <QObject>

class CaptureDesk;
class MirvakCamera;

/// The capture commands. GUI thread only.
class ScanModes : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed for the life of this object.
    ScanModes(CaptureDesk& desk, MirvakCamera& camera, QObject* parent = nullptr)
        : QObject(parent), desk_(desk), composite_(desk, camera)
    {
    }

    /// One picture, with the colour processing of the settings; of both cameras where the settings want it.
    void scan();
    /// One picture of a document, always with white paper and the blue seal strengthened.
    void scanDocument();

private:
    void capture(int colourMode);

    CaptureDesk& desk_;
    CompositeCapture composite_;
};

#pragma once

#include "FrameHandle.h"

#include <QCoreApplication>
#include <QPoint>
#include <QSize>

class CaptureDesk;
class MirvakCamera;

/// One picture of both cameras: the second camera's frame, a third as large, in a corner of the main one's.
/// GUI thread only.
class CompositeCapture
{
    Q_DECLARE_TR_FUNCTIONS(CompositeCapture)

public:
    /// Both are borrowed.
    CompositeCapture(CaptureDesk& desk, MirvakCamera& camera) : desk_(desk), camera_(camera) {}

    /// Whether the settings and the second camera's picture on the screen ask for it.
    bool isWanted() const;
    /// Takes, saves and lists the picture; refuses with a message while pages are cut out automatically.
    void take(int colourMode);

    /// Where the inset goes. @param corner 0 top left, 1 bottom left, 2 top right, 3 bottom right; others
    /// count as 0. @param main, second sizes of the two frames in px. The inset is a third of the second
    /// frame, while the distance from the far edges allows for half of it.
    static QPoint insetPosition(int corner, const QSize& main, const QSize& second);

private:
    QSize sizeOf(const FrameHandle& frame) const;
    FrameHandle merge(const FrameHandle& main, const FrameHandle& second) const;

    CaptureDesk& desk_;
    MirvakCamera& camera_;
};

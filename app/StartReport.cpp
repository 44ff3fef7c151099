#include "StartReport.h"

#include "VideoView.h"

#include <QEvent>
#include <QTimer>

#include <cstdio>

StartReport::StartReport(VideoView& view) : view_(view)
{
    if (qEnvironmentVariableIsSet("LUMRO_START_REPORT"))
        view.installEventFilter(this);
}

bool StartReport::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint && !view_.GetImageCurrentSize().isEmpty()) {
        view_.removeEventFilter(this);
        // Painting happens after this filter and reaches the screen before the next turn of the event loop.
        QTimer::singleShot(0, this, [] {
            std::puts("first picture painted");
            std::fflush(stdout);
        });
    }
    return QObject::eventFilter(watched, event);
}

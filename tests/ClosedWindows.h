#pragma once

#include <QQuickWindow>
#include <QSignalSpy>

// The software scene graph frees the pictures of a closed window with the next frame that it draws.
inline bool freeClosedWindows()
{
    QQuickWindow last;
    last.releaseResources();
    QSignalSpy drawn(&last, &QQuickWindow::frameSwapped);
    last.show();
    return drawn.wait();
}

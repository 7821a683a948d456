#include "app/WindowDrag.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>

WindowDrag::WindowDrag(QWindow &window)
    : QObject(&window)
    , m_window(window)
{
}

void WindowDrag::by(int x, int y)
{
    if (!leaveToCompositor(m_window)) {
        m_window.setX(m_window.x() + x);
        m_window.setY(m_window.y() + y);
    }
}

bool WindowDrag::leaveToCompositor(QWindow &window)
{
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        return false;
    }
    if (window.startSystemMove()) {
        // Not from within the move that has asked for this.
        QTimer::singleShot(0, &window, [&window] {
            const QPointF outside(-1, -1); // where no control takes it for a click
            QMouseEvent release(QEvent::MouseButtonRelease, outside, outside, outside,
                Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &release);
        });
    }
    return true;
}

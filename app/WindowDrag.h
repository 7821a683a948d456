#pragma once

#include <QObject>

class QWindow;

// Moves a window without a title bar as the user drags it.
class WindowDrag : public QObject {
    Q_OBJECT

public:
    explicit WindowDrag(QWindow &window); // belongs to the window

    // Wayland lets no program move its window: there the compositor takes over the drag that the
    // user has begun. It keeps the release of the button, which the scene then gets from here.
    // False where the program has to move its window itself.
    static bool leaveToCompositor(QWindow &window);

public slots:
    void by(int x, int y); // pixels

private:
    QWindow &m_window;
};

#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRegion>
#include <QSize>

class QWindow;

// The window of both programs is a transparent rectangle of which the scene draws the upper part,
// with round corners. What is below gets no clicks; and where nobody composites windows, so that
// transparent is black, the round corners are cut off as well. A compositor that starts or ends is
// noticed. Only X11 has windows that nobody composites.
class WindowShape : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit WindowShape(QWindow &window); // belongs to the window

    // In pixels, from the top. Until it is called all of the window is drawn.
    void setDrawnHeight(int height);

    // A rectangle whose corners leave out every pixel that is not drawn completely.
    static QRegion roundedRectangle(QSize size);

private:
    bool nativeEventFilter(const QByteArray &type, void *message, long *result) override;
    void apply();

    QWindow &m_window;
    int m_drawnHeight;
};

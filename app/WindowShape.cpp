#include "app/WindowShape.h"

#include <QCoreApplication>
#include <QWindow>
#ifdef VORN_X11
#include <QX11Info>

#include <xcb/shape.h>
#endif

#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

constexpr int cornerRadius = 12; // that of the scene's pages

#ifdef VORN_X11

void setInputArea(quint32 window, QSize size)
{
    const xcb_rectangle_t area = {
        0, 0, static_cast<quint16>(size.width()), static_cast<quint16>(size.height())};
    xcb_shape_rectangles(QX11Info::connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
        XCB_CLIP_ORDERING_UNSORTED, window, 0, 0, 1, &area);
}

xcb_atom_t atomNamed(const QByteArray &name)
{
    xcb_connection_t *const server = QX11Info::connection();
    const xcb_intern_atom_cookie_t question =
        xcb_intern_atom(server, 0, static_cast<quint16>(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> answer(
        xcb_intern_atom_reply(server, question, nullptr), std::free);
    return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// Window managers and compositors put borders, and shadows, around the rest.
void setUndrawnBottom(quint32 window, quint32 height)
{
    static const xcb_atom_t frameExtents = atomNamed("_GTK_FRAME_EXTENTS");
    const quint32 leftRightTopBottom[] = {0, 0, 0, height};
    xcb_change_property(QX11Info::connection(), XCB_PROP_MODE_REPLACE, window, frameExtents,
        XCB_ATOM_CARDINAL, 32, 4, leftRightTopBottom);
}

// Qt's own mask is what is visible of a window; compositors that draw shadows would fill the rest.
void shapeOnX11(QWindow &window, QSize drawn)
{
    const auto id = static_cast<quint32>(window.winId());
    const QSize size = window.size() * window.devicePixelRatio();
    const QSize drawnSize = drawn * window.devicePixelRatio();
    setInputArea(id, drawnSize);
    setUndrawnBottom(id, static_cast<quint32>(size.height() - drawnSize.height()));
    const bool isComposited = QX11Info::isCompositingManagerRunning();
    window.setMask(isComposited ? QRegion() : WindowShape::roundedRectangle(drawn));
}

#endif

} // namespace

WindowShape::WindowShape(QWindow &window)
    : QObject(&window)
    , m_window(window)
    , m_drawnHeight(window.height())
{
    QCoreApplication::instance()->installNativeEventFilter(this);
    apply();
}

void WindowShape::setDrawnHeight(int height)
{
    m_drawnHeight = height;
    apply();
}

QRegion WindowShape::roundedRectangle(QSize size)
{
    QRegion region(0, cornerRadius, size.width(), size.height() - 2 * cornerRadius);
    for (int row = 0; row < cornerRadius; ++row) {
        const int above = cornerRadius - row; // the centre of the corner's circle
        const double half = std::sqrt(cornerRadius * cornerRadius - above * above);
        const int inset = cornerRadius - static_cast<int>(half);
        const int length = size.width() - 2 * inset;
        region += QRect(inset, row, length, 1);
        region += QRect(inset, size.height() - 1 - row, length, 1);
    }
    return region;
}

// The X server tells Qt in an event of an extension who composites. These events are rare, so after
// each of them, when Qt has read it, the shape is made anew.
bool WindowShape::nativeEventFilter(const QByteArray &type, void *message, long *)
{
    constexpr unsigned firstOfExtensions = 64;
    constexpr unsigned sentByClient = 0x80;
    if (type == "xcb_generic_event_t"
        && (*static_cast<const quint8 *>(message) & ~sentByClient) >= firstOfExtensions) {
        QMetaObject::invokeMethod(this, &WindowShape::apply, Qt::QueuedConnection);
    }
    return false;
}

void WindowShape::apply()
{
    const QSize drawn(m_window.width(), m_drawnHeight);
#ifdef VORN_X11
    if (QX11Info::isPlatformX11()) {
        shapeOnX11(m_window, drawn);
        return;
    }
#endif
    // Wayland's mask is where the window takes clicks.
    m_window.setMask(QRect(QPoint(), drawn));
}

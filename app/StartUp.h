#pragma once

#include <thread>

class QIcon;
class QQuickView;
class QWindow;

// What has to stand before the scene is loaded.

// Before the application object: X11 comes first, since Wayland ignores window moves, unless the
// user asked for a platform. The launcher's pkexec does not hand the choice on to the client.
void preferX11();

// Has another thread read the system's font configuration, which all texts need and which takes a
// sixth of the start. Begin before the application object, which connects to the display meanwhile,
// and join before the first use of a font: two that read it at once both do the whole work.
std::thread readFontConfiguration();

// Before the application object: from a factor of 1.75 on (168 dots per inch) everything is drawn
// in twice its size. Below, only the texts follow the dots per inch, as the scene arranges it.
void scaleOnDenseScreens();

// Before the first window: the software scene graph needs no OpenGL driver, starts faster than any
// and gives a window with an alpha channel.
void useSoftwareSceneGraph();

// The sizes that window lists and title bars show; the file has larger ones for menus, which would
// only take time on their way to the window system.
QIcon windowIcon();

// The application font, and subset fonts that hold every character of the translations: a bare
// system has no Chinese font.
void setUpFonts();

// The back-end classes as the scene imports them.
void registerQmlTypes();

// The size that the scene has given the window is the only one, for window managers too.
void fixSize(QWindow &window);

// For a window of one page, once it has its scene: its size, its shape, and moves as the scene's
// signal send_drag(x, y) asks for them.
void equipFramelessWindow(QQuickView &window);

void centreOnPrimaryScreen(QWindow &window);

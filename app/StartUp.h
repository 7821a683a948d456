#pragma once

#include <thread>

class QIcon;
class QWindow;

// What has to stand before the scene is loaded.

// Before the application object: X11 comes first, since Wayland ignores window moves, unless the
// user asked for a platform. The launcher's pkexec does not hand the choice on to the client.
void preferX11();

// Has another thread read the system's font configuration, which all texts need and which takes a
// sixth of the start. Begin before the application object, which connects to the display meanwhile,
// and join before the first use of a font: two that read it at once both do the whole work.
std::thread readFontConfiguration();

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

void centreOnPrimaryScreen(QWindow &window);

#pragma once

class QIcon;
class QQuickView;
class QWindow;

// What has to stand before the scene is loaded.

// Before the application object: X11 comes first, since Wayland ignores window moves, unless the
// user asked for a platform. The launcher's pkexec does not hand the choice on to the client.
void preferX11();

// Before the application object: from a factor of 1.75 on (168 dots per inch) everything is drawn
// in twice its size. Below, only the texts follow the dots per inch, as the scene arranges it. A
// user's QT_SCALE_FACTOR above 1 is the whole factor, as in programs that leave scaling to it: Qt
// would multiply both.
void scaleOnDenseScreens();

// Before the first window: the software scene graph needs no OpenGL driver, starts faster than any
// and gives a window with an alpha channel.
void useSoftwareSceneGraph();

// The sizes that window lists and title bars show; the file has larger ones for menus, which would
// only take time on their way to the window system.
QIcon windowIcon();

// Has another thread find the system's fonts, which takes a sixth of the start, more where there
// are thousands. It needs the application object. Where no thread is to be had, setUpFonts() does
// it.
void loadFontsAhead();

// Before the first text: the application font, and subset fonts that hold every character of the
// translations, since a bare system has no Chinese font. Waits for loadFontsAhead(): a text that
// comes before would never know the subset fonts.
void setUpFonts();

// The back-end classes as the scene imports them.
void registerQmlTypes();

// The size that the scene has given the window is the only one, for window managers too.
void fixSize(QWindow &window);

// For a window of one page, once it has its scene: its size, its shape, and moves as the scene's
// signal send_drag(x, y) asks for them.
void equipFramelessWindow(QQuickView &window);

void centreOnPrimaryScreen(QWindow &window);

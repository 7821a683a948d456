# What the window tells an X server beyond Qt's means. Without these packages vorn_x11 is empty: the
# window's round corners are then black where nobody composites windows, and all else is the same.
find_package(Qt5X11Extras 5.15 QUIET)
find_library(VORN_XCB xcb)
find_library(VORN_XCB_SHAPE xcb-shape)
find_path(VORN_XCB_HEADERS xcb/shape.h)
mark_as_advanced(VORN_XCB VORN_XCB_SHAPE VORN_XCB_HEADERS)

add_library(vorn_x11 INTERFACE)
if(Qt5X11Extras_FOUND AND VORN_XCB AND VORN_XCB_SHAPE AND VORN_XCB_HEADERS)
  target_compile_definitions(vorn_x11 INTERFACE VORN_X11)
  target_link_libraries(vorn_x11 INTERFACE Qt5::X11Extras ${VORN_XCB_SHAPE} ${VORN_XCB})
else()
  message(STATUS "No libqt5x11extras5-dev or libxcb-shape0-dev: the window has black corners on bare X11")
endif()

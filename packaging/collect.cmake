# Makes a bundle independent of the Qt of the machine: adds the libraries, plug-ins and QML modules
# that its programs use, and qt.conf. Fails when something is neither there nor on every desktop.
#   cmake -DBUNDLE=DIR -DPROGRAMS="A;B" -DQML_SOURCES="DIR;DIR" -DPAYLOAD_BINARIES="FILE;FILE"
#         -DPAYLOAD=DIR -DQT_PLUGINS=DIR -DQT_QML=DIR -DQT_TRANSLATIONS=DIR -DQT_BINS=DIR
#         -P collect.cmake
# PROGRAMS lie in BUNDLE already, and so does what is in PAYLOAD. PAYLOAD_BINARIES are read for what
# they need and not changed.
cmake_minimum_required(VERSION 3.25)

# The wayland ones are for sessions without an X server; the GL integrations for clients that draw
# with OpenGL: the installer itself needs none.
set(plugins
  platforms/libqxcb.so
  platforms/libqwayland-egl.so
  platforms/libqwayland-generic.so
  wayland-shell-integration/libxdg-shell.so
  wayland-decoration-client/libbradient.so
  wayland-graphics-integration-client/libqt-plugin-wayland-egl.so
  xcbglintegrations/libqxcb-egl-integration.so
  xcbglintegrations/libqxcb-glx-integration.so
  platforminputcontexts/libcomposeplatforminputcontextplugin.so
  platforminputcontexts/libibusplatforminputcontextplugin.so
  iconengines/libqsvgicon.so
  imageformats/libqgif.so
  imageformats/libqico.so
  imageformats/libqjpeg.so
  imageformats/libqsvg.so)

# Loaded from C++ or only by a fall-back, so that no import names them.
set(extra_modules
  QtQuick/Controls
  QtQuick/PrivateWidgets
  Qt/labs/folderlistmodel
  Qt/labs/settings)

# Styles of controls that are not in use ask for QtQuick.Extras; QtQml.WorkerScript is part of
# libQt5QmlWorkerScript, which the library list has. The others are registered by the programs.
set(optional_imports "^(QtQml\\.WorkerScript|QtQuick\\.Extras.*|VORN\\..*)$")

# Loaded at run time by name.
set(loaded_later libssl.so.3 libcrypto.so.3)

# On every desktop, and better taken from there: the C library, the GL driver and what talks to the
# X server, fonts, session management. libsystemd is what the message bus asks two questions; it
# drags five libraries along, and every system that the bundle supports has it from its first hour.
set(of_the_system
  "^ld-linux.*" "^lib(c|m|dl|rt|pthread|resolv|util|nsl|anl|BrokenLocale)\\.so\\..*"
  "^lib(stdc\\+\\+|gcc_s)\\.so\\..*"
  "^lib(GL|EGL|GLX|OpenGL|GLdispatch|gbm|drm|glapi)\\.so\\..*"
  "^lib(X11|X11-xcb|xcb|xcb-dri2|xcb-dri3|Xau|Xdmcp)\\.so\\..*"
  "^lib(fontconfig|freetype|harfbuzz|fribidi|expat|uuid)\\.so\\..*"
  "^lib(ICE|SM|z|com_err|p11-kit)\\.so\\..*"
  "^libsystemd\\.so\\..*"
  "^libwayland-client\\.so\\..*")

# Two Qts in one place would not fit together, so the payload must not bring its own.
function(add_file source relative)
  if(EXISTS ${PAYLOAD}/${relative})
    message(FATAL_ERROR "The bundle brings ${relative}: leave it out of the payload.")
  endif()
  file(REAL_PATH ${source} real)
  get_filename_component(directory ${BUNDLE}/${relative} DIRECTORY)
  file(MAKE_DIRECTORY ${directory})
  file(COPY_FILE ${real} ${BUNDLE}/${relative})
endfunction()

# --- plug-ins ---------------------------------------------------------------------------------

foreach(plugin ${plugins})
  if(NOT EXISTS ${QT_PLUGINS}/${plugin})
    message(FATAL_ERROR "The plug-in ${plugin} is missing in ${QT_PLUGINS}")
  endif()
  add_file(${QT_PLUGINS}/${plugin} plugins/${plugin})
  list(APPEND modules ${BUNDLE}/plugins/${plugin})
endforeach()

# --- QML modules ------------------------------------------------------------------------------

# A directory below a module that has a qmldir is another module; "whole" takes those along.
function(add_module relative whole)
  file(GLOB_RECURSE files RELATIVE ${QT_QML}/${relative} ${QT_QML}/${relative}/*)
  foreach(file ${files})
    set(is_other FALSE)
    get_filename_component(directory ${file} DIRECTORY)
    while(directory AND NOT whole)
      if(EXISTS ${QT_QML}/${relative}/${directory}/qmldir)
        set(is_other TRUE)
      endif()
      get_filename_component(directory ${directory} DIRECTORY)
    endwhile()
    if(NOT is_other AND NOT file MATCHES "\\.(qmlc|jsc)$|(^|/)plugins\\.qmltypes$|(^|/)\\.")
      add_file(${QT_QML}/${relative}/${file} qml/${relative}/${file})
    endif()
  endforeach()
endfunction()

set(roots ${QML_SOURCES} ${PAYLOAD})
foreach(module ${extra_modules})
  if(NOT EXISTS ${QT_QML}/${module})
    message(FATAL_ERROR "The QML module ${module} is missing in ${QT_QML}")
  endif()
  add_module(${module} TRUE)
  list(APPEND roots ${QT_QML}/${module})
endforeach()

set(unresolved "")
foreach(root ${roots})
  execute_process(COMMAND ${QT_BINS}/qmlimportscanner -rootPath ${root}
      -importPath ${PAYLOAD}/qml -importPath ${QT_QML}
    OUTPUT_VARIABLE imports COMMAND_ERROR_IS_FATAL ANY)
  string(JSON count LENGTH "${imports}")
  if(count EQUAL 0)
    continue()
  endif()
  math(EXPR last "${count} - 1")
  foreach(index RANGE ${last})
    string(JSON type GET "${imports}" ${index} type)
    string(JSON name GET "${imports}" ${index} name)
    string(JSON relative ERROR_VARIABLE missing GET "${imports}" ${index} relativePath)
    if(type STREQUAL "module" AND NOT missing)
      if(NOT EXISTS ${PAYLOAD}/qml/${relative}/qmldir)
        list(APPEND found ${relative})
      endif()
    elseif(type STREQUAL "module" AND NOT name MATCHES "${optional_imports}")
      list(APPEND unresolved "${name} (in ${root})")
    endif()
  endforeach()
endforeach()
if(unresolved)
  list(REMOVE_DUPLICATES unresolved)
  list(JOIN unresolved "\n  " unresolved)
  message(FATAL_ERROR "QML modules are missing:\n  ${unresolved}")
endif()
list(REMOVE_DUPLICATES found)
foreach(module ${found})
  set(is_there FALSE)
  foreach(whole ${extra_modules})
    string(FIND "${module}/" "${whole}/" position)
    if(position EQUAL 0)
      set(is_there TRUE)
    endif()
  endforeach()
  if(NOT is_there)
    add_module(${module} FALSE)
  endif()
endforeach()

file(GLOB_RECURSE qml_libraries ${BUNDLE}/qml/*.so)
list(APPEND modules ${qml_libraries})

# --- libraries --------------------------------------------------------------------------------

get_filename_component(plugins_parent ${QT_PLUGINS} DIRECTORY)
get_filename_component(qt_libraries ${plugins_parent} DIRECTORY)
list(TRANSFORM PROGRAMS PREPEND ${BUNDLE}/)
foreach(library ${loaded_later})
  if(NOT EXISTS ${qt_libraries}/${library})
    message(FATAL_ERROR "The library ${library} is missing in ${qt_libraries}")
  endif()
  list(APPEND modules ${qt_libraries}/${library})
  add_file(${qt_libraries}/${library} lib/${library})
endforeach()

file(GET_RUNTIME_DEPENDENCIES
  EXECUTABLES ${PROGRAMS}
  MODULES ${modules} ${PAYLOAD_BINARIES}
  DIRECTORIES ${BUNDLE}/lib ${qt_libraries}
  RESOLVED_DEPENDENCIES_VAR resolved
  UNRESOLVED_DEPENDENCIES_VAR unresolved
  CONFLICTING_DEPENDENCIES_PREFIX conflicting
  PRE_EXCLUDE_REGEXES ${of_the_system})
if(unresolved)
  list(JOIN unresolved "\n  " unresolved)
  message(FATAL_ERROR "These libraries are missing:\n  ${unresolved}")
endif()
foreach(library ${resolved})
  get_filename_component(soname ${library} NAME)
  cmake_path(IS_PREFIX BUNDLE ${library} is_there)
  if(NOT is_there AND NOT soname IN_LIST loaded_later)
    add_file(${library} lib/${soname})
  endif()
endforeach()

# Qt asks for libssl.so and libcrypto.so, the names of the development package, and then looks into the
# system's directories first. These lead to the bundle's.
foreach(library ${loaded_later})
  string(REGEX REPLACE "\\.so\\..*" ".so" asked_for ${library})
  execute_process(COMMAND ld -shared -s --build-id=none -z noexecstack --no-as-needed
      -soname ${asked_for} -o ${BUNDLE}/lib/${asked_for} ${BUNDLE}/lib/${library}
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# --- Qt's own texts -----------------------------------------------------------------------------

# Those of the folder dialog. Each translation of the scene tells Qt's name of its language; not
# every language has one.
foreach(root ${QML_SOURCES})
  file(GLOB sources ${root}/internationalization/os_language_*.ts)
  foreach(source ${sources})
    file(READ ${source} text)
    if(text MATCHES "<source>en</source>[ \n]*<translation>([A-Za-z_]+)<")
      foreach(name qtbase_${CMAKE_MATCH_1}.qm qtquickcontrols_${CMAKE_MATCH_1}.qm)
        if(EXISTS ${QT_TRANSLATIONS}/${name})
          add_file(${QT_TRANSLATIONS}/${name} translations/${name})
        endif()
      endforeach()
    endif()
  endforeach()
endforeach()
if(NOT EXISTS ${BUNDLE}/translations)
  message(FATAL_ERROR "No translation of Qt's own texts is in ${QT_TRANSLATIONS}")
endif()

# --- where they find each other ---------------------------------------------------------------

file(WRITE ${BUNDLE}/qt.conf "[Paths]\nPrefix=.\nPlugins=plugins\nQml2Imports=qml\n")

function(set_runpath file directory)
  file(RELATIVE_PATH lib ${directory} ${BUNDLE}/lib)
  set(runpath "$ORIGIN")
  if(lib)
    set(runpath "$ORIGIN/${lib}")
  endif()
  execute_process(COMMAND patchelf --set-rpath ${runpath} ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Those of the payload stay as they are: the launchers tell them where the libraries are.
file(GLOB libraries ${BUNDLE}/lib/*.so*)
file(GLOB_RECURSE plugin_libraries ${BUNDLE}/plugins/*.so)
file(GLOB_RECURSE qml_libraries ${BUNDLE}/qml/*.so)
foreach(file ${PROGRAMS} ${libraries} ${plugin_libraries} ${qml_libraries})
  file(READ ${file} magic LIMIT 4 HEX)
  if(magic STREQUAL "7f454c46" AND NOT file IN_LIST PAYLOAD_BINARIES)
    get_filename_component(directory ${file} DIRECTORY)
    set_runpath(${file} ${directory})
  endif()
endforeach()

# Describes the classes that scenes use to editors and to qmllint, from their headers:
# qmltypes/VORN/NAME/{qmldir,plugins.qmltypes} in the build folder. The class names itself with
# Q_CLASSINFO("QML.Element", "NAME"). There is no plug-in: the program registers the types. Without
# the line that names one, qmllint does not read the description.
get_target_property(moc Qt5::moc IMPORTED_LOCATION)
get_filename_component(qt_programs ${moc} DIRECTORY)
find_program(QML_TYPE_REGISTRAR qmltyperegistrar HINTS ${qt_programs} REQUIRED)

set(type_descriptions "")

function(vorn_describe name header)
  set(folder ${CMAKE_BINARY_DIR}/qmltypes/VORN/${name})
  set(work ${CMAKE_BINARY_DIR}/generated/qmltypes/${name})
  file(MAKE_DIRECTORY ${folder} ${work})
  file(WRITE ${folder}/qmldir 
    "module VORN.${name}\nplugin ${name}\ntypeinfo plugins.qmltypes\n")
  set(directories $<TARGET_PROPERTY:vorn_core,INCLUDE_DIRECTORIES>)
  add_custom_command(OUTPUT ${folder}/plugins.qmltypes
    COMMAND Qt5::moc --output-json "-I$<JOIN:${directories},;-I>" -DQT_CORE_LIB
      ${CMAKE_SOURCE_DIR}/${header} -o ${work}/moc.cpp
    COMMAND Qt5::moc --collect-json -o ${work}/types.json ${work}/moc.cpp.json
    COMMAND ${QML_TYPE_REGISTRAR} --import-name=VORN.${name} --major-version=1 --minor-version=0
      --generate-qmltypes=${folder}/plugins.qmltypes -o ${work}/registration.cpp ${work}/types.json
    DEPENDS ${CMAKE_SOURCE_DIR}/${header} COMMAND_EXPAND_LISTS VERBATIM)
  set(type_descriptions ${type_descriptions} ${folder}/plugins.qmltypes PARENT_SCOPE)
endfunction()

vorn_describe(KQHttpManager api/KQHttpManager.h)
vorn_describe(Operating installer/Operating.h)
vorn_describe(DataManager settings/DataManager.h)
add_custom_target(type_descriptions ALL DEPENDS ${type_descriptions})

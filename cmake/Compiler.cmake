set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# Linked PRIVATE by every target of this project; moc, rcc and qmlcachegen output is exempt:
# Qt headers come in as system headers.
add_library(vorn_warnings INTERFACE)
target_compile_options(vorn_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${VORN_WERROR}>:-Werror>)
target_compile_definitions(vorn_warnings INTERFACE
  QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER QT_NO_FOREACH QT_DEPRECATED_WARNINGS)

if(VORN_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VORN_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()
if(VORN_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

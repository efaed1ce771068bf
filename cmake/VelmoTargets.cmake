# How every target of Velmo is built: language level, warnings, sanitizers, where the binaries go.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_AUTOMOC OFF)

add_compile_options(-Wall -Wextra -Wpedantic -Werror)
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

if(VELMO_SANITIZE)
  add_compile_options(-fsanitize=${VELMO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VELMO_SANITIZE})
endif()
if(VELMO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()

# One folder of src/, one library; its headers are included from the root of src/ ("store/preferences.h").
function(velmo_library name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  velmo_precompile_headers(${name})
endfunction()

# What nearly every file includes, compiled once for all libraries. The tidy preset goes without it, so a file that
# forgets an include is found there. Back-ends have compile flags of their own, which would not fit.
function(velmo_precompile_headers name)
  if(name STREQUAL "velmo_base")
    target_precompile_headers(${name} PRIVATE <QByteArray> <QList> <QObject> <QString> <QStringList>
      <algorithm> <chrono> <functional> <memory> <mutex> <optional> <thread> <vector>)
  elseif(NOT name MATCHES "^velmo_platform_")
    target_precompile_headers(${name} REUSE_FROM velmo_base)
  endif()
endfunction()

# What every compiled QML file includes takes eight times as long as its own code, so it is compiled once.
function(velmo_qml_headers)
  file(CONFIGURE OUTPUT qml_headers.cpp CONTENT "// Has nothing of its own.\n")
  add_library(velmo_qml_headers OBJECT "${CMAKE_CURRENT_BINARY_DIR}/qml_headers.cpp")
  target_link_libraries(velmo_qml_headers PRIVATE Qt6::Quick)
  target_precompile_headers(velmo_qml_headers PRIVATE <QtQml/qqmlprivate.h> <QtQml/qjsprimitivevalue.h>
    <QtQml/qqmlcomponent.h> <QtQml/qqmlcontext.h> <QtQml/qqmlengine.h> <QtCore/qdatetime.h> <QtCore/qurl.h>
    <QtCore/qvariant.h> <functional> <memory> <type_traits>)
endfunction()

# A folder of src/ui/ that is a QML module: velmo_qml_module(velmo_ui_popover URI Velmo.Popover SOURCES a.cpp QML A.qml).
# DEPENDENCIES are the modules its C++ types come from, for those who check the QML; QtQuick unless told otherwise.
function(velmo_qml_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "SOURCES;QML;SINGLETONS;DEPENDENCIES")
  if(NOT arg_DEPENDENCIES)
    set(arg_DEPENDENCIES QtQuick)
  endif()
  set_source_files_properties(${arg_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
  string(REPLACE "." "/" path ${arg_URI})
  set(CMAKE_AUTOMOC ON)
  if(NOT VELMO_COMPILED_QML)
    set(interpreted NO_CACHEGEN)
  endif()
  qt_add_qml_module(${name} STATIC NO_PLUGIN ${interpreted} URI ${arg_URI} VERSION 1.0
    OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/qml/${path}"
    RESOURCE_PREFIX /qt-project.org/imports
    DEPENDENCIES ${arg_DEPENDENCIES}
    SOURCES ${arg_SOURCES}
    QML_FILES ${arg_SINGLETONS} ${arg_QML})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src" PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  if(arg_QML)
    target_precompile_headers(${name} REUSE_FROM velmo_qml_headers)
  else()
    velmo_precompile_headers(${name})
  endif()
  # Nothing refers to the file that registers the types, so the linker has to be told that it is needed.
  string(REPLACE "." "_" register "qml_register_types_${arg_URI}")
  string(LENGTH ${register} length)
  target_link_options(${name} INTERFACE "LINKER:--undefined=_Z${length}${register}v")
endfunction()

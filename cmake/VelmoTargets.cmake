# How every target of Velmo is built: language level, warnings, sanitizers, where the binaries go.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_AUTOMOC OFF)

add_compile_options(-Wall -Wextra -Wpedantic -Werror)
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

if(VELMO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VELMO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()

# One folder of src/, one library; its headers are included from the root of src/ ("store/preferences.h").
function(velmo_library name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  # What nearly every file includes, compiled once for all libraries. The tidy preset goes without it, so a file
  # that forgets an include is found there. Back-ends have compile flags of their own, which would not fit.
  if(name STREQUAL "velmo_base")
    target_precompile_headers(${name} PRIVATE <QByteArray> <QList> <QObject> <QString> <QStringList>
      <algorithm> <chrono> <functional> <memory> <mutex> <optional> <thread> <vector>)
  elseif(NOT name MATCHES "^velmo_platform_")
    target_precompile_headers(${name} REUSE_FROM velmo_base)
  endif()
endfunction()

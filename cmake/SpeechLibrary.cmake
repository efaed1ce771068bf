# The speech library whisper.cpp: the distribution's own, else the one that scripts/install-deps builds where there is none.
# The model of its voice detector comes from there in either case, and becomes part of the program, which so finds it wherever
# it runs.
#
# The fuzz targets go without: clang has no OpenMP, and the library is not ours to fuzz.
set(VELMO_WHISPER OFF)
if(VELMO_FUZZ)
  return()
endif()

if(DEFINED ENV{XDG_CACHE_HOME})
  set(VELMO_SPEECH_PREFIX "$ENV{XDG_CACHE_HOME}/velmo/tools/whisper")
else()
  set(VELMO_SPEECH_PREFIX "$ENV{HOME}/.cache/velmo/tools/whisper")
endif()
# By the prefix path, as it finds a package of its own in turn.
list(APPEND CMAKE_PREFIX_PATH "${VELMO_SPEECH_PREFIX}")
find_package(whisper QUIET CONFIG)
find_file(VELMO_VOICE_DETECTOR voice-detector.bin PATHS "${VELMO_SPEECH_PREFIX}/share/velmo" NO_DEFAULT_PATH)
mark_as_advanced(VELMO_VOICE_DETECTOR)

if(whisper_FOUND AND VELMO_VOICE_DETECTOR)
  set(VELMO_WHISPER ON)
else()
  message(STATUS "No whisper.cpp (scripts/install-deps gets it): the local service understands English alone")
endif()

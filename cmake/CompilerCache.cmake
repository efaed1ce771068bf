# Objects that were compiled before, here or in another clone, come from ccache: a help, never a need. Paths below the
# clone do not count, and precompiled headers are looked through.
if(VELMO_COMPILER_CACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(VELMO_CCACHE ccache)
  find_program(VELMO_ENV env)
  mark_as_advanced(VELMO_CCACHE VELMO_ENV)
  if(VELMO_CCACHE AND VELMO_ENV)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${VELMO_ENV}
      CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${VELMO_CCACHE})
  endif()
endif()

# Uses ccache when it is installed and no launcher is set.
find_program(VARROW_CCACHE ccache)
mark_as_advanced(VARROW_CCACHE)
if(VARROW_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${VARROW_CCACHE}")
endif()

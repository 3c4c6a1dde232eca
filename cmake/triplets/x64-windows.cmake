# Triplet file of vcpkg: takes the place of its own, from which it differs for log4cplus only.
set(VCPKG_TARGET_ARCHITECTURE x64)
set(VCPKG_CRT_LINKAGE dynamic)
set(VCPKG_LIBRARY_LINKAGE dynamic)

# With its thread pool a process hangs at its exit.
if(PORT STREQUAL "log4cplus")
  set(VCPKG_CMAKE_CONFIGURE_OPTIONS "-DLOG4CPLUS_ENABLE_THREAD_POOL=OFF")
endif()

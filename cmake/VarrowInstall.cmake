# Installation of the library, and the packages by which CMake and pkg-config find it.
include(CMakePackageConfigHelpers)

set(VARROW_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/varrow")

install(
  TARGETS varrow
  EXPORT varrowTargets
  RUNTIME COMPONENT runtime
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(
  DIRECTORY "${PROJECT_SOURCE_DIR}/include/libvarrow"
            "${PROJECT_SOURCE_DIR}/3pp/cppbind/include/cppbind"
            "${PROJECT_BINARY_DIR}/generated/libvarrow"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  COMPONENT development
  PATTERN host EXCLUDE)

# find_package(varrow 1.0 CONFIG)
install(
  EXPORT varrowTargets
  NAMESPACE varrow::
  DESTINATION "${VARROW_PACKAGE_DIR}"
  COMPONENT development)
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/varrowConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/generated/varrowConfig.cmake" INSTALL_DESTINATION "${VARROW_PACKAGE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/generated/varrowConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(
  FILES "${PROJECT_BINARY_DIR}/generated/varrowConfig.cmake"
        "${PROJECT_BINARY_DIR}/generated/varrowConfigVersion.cmake"
        "${PROJECT_SOURCE_DIR}/cmake/VarrowNarrowPoco.cmake"
  DESTINATION "${VARROW_PACKAGE_DIR}"
  COMPONENT development)

# pkg-config varrow. The prefix is relative to the file, so the installed tree may be moved.
file(RELATIVE_PATH VARROW_PREFIX_FROM_PC "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file("${PROJECT_SOURCE_DIR}/cmake/varrow.pc.in"
               "${PROJECT_BINARY_DIR}/generated/varrow.pc" @ONLY)
install(
  FILES "${PROJECT_BINARY_DIR}/generated/varrow.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT development)

if(NOT VARROW_BUILD_HOST)
  return()
endif()

# The library of hosts and the program: find_package(varrow 1.0 CONFIG COMPONENTS host), pkg-config
# varrow-host.
install(
  TARGETS varrow_host
  EXPORT varrowHostTargets
  RUNTIME COMPONENT host_runtime
  LIBRARY COMPONENT host_runtime NAMELINK_COMPONENT host_development
  ARCHIVE COMPONENT host_development)
install(
  DIRECTORY "${PROJECT_SOURCE_DIR}/include/libvarrow/host"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/libvarrow"
  COMPONENT host_development)
install(
  EXPORT varrowHostTargets
  NAMESPACE varrow::
  DESTINATION "${VARROW_PACKAGE_DIR}"
  COMPONENT host_development)
configure_file("${PROJECT_SOURCE_DIR}/cmake/varrow-host.pc.in"
               "${PROJECT_BINARY_DIR}/generated/varrow-host.pc" @ONLY)
install(
  FILES "${PROJECT_BINARY_DIR}/generated/varrow-host.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT host_development)
if(TARGET varrow_tool)
  install(TARGETS varrow_tool RUNTIME COMPONENT tools)
endif()

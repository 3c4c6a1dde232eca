# The Debian packages, `cmake --workflow --preset package`: runtime and development, the same for the
# library of hosts, and the program. Nothing is stripped, so that back-traces name functions and lines without debug packages.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libvarrow)
set(CPACK_PACKAGE_CONTACT "libvarrow developers <libvarrow@localhost>"
    CACHE STRING "Maintainer of the packages")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(VARROW_BUILD_HOST)
  list(APPEND CPACK_COMPONENTS_ALL host_runtime host_development tools)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# Lets the package of a host find its dependencies.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "libvarrow${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "Pipelines of modules, statistics, calendars, rules and plug-ins for hosts that plan.")

# The dependencies of the public headers, varrowConfig.cmake and varrow.pc.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvarrow-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
string(
  JOIN ", " CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})" "libboost-filesystem-dev (>= 1.74)"
  "libboost-thread-dev (>= 1.74)" "libjsoncpp-dev (>= 1.9.5)" "libpoco-dev (>= 1.11)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "The headers of libvarrow and the files by which CMake and pkg-config find it.")

# The libraries of the other packages are found in the build; the packages are named.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/src"
                                                "${PROJECT_BINARY_DIR}/src/host")
set(CPACK_DEBIAN_HOST_RUNTIME_PACKAGE_NAME "libvarrow-host${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_HOST_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_HOST_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_HOST_RUNTIME_PACKAGE_DEPENDS
    "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_HOST_RUNTIME_DESCRIPTION
    "The frame of programs that run pipelines of libvarrow: command line, run folders, logs.")

set(CPACK_DEBIAN_HOST_DEVELOPMENT_PACKAGE_NAME libvarrow-host-dev)
set(CPACK_DEBIAN_HOST_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_HOST_DEVELOPMENT_PACKAGE_DEPENDS
    "${CPACK_DEBIAN_HOST_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION}), libvarrow-dev (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_HOST_DEVELOPMENT_DESCRIPTION
    "The headers of libvarrow-host and the files by which CMake and pkg-config find it.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME varrow)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION science)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
    "${CPACK_DEBIAN_HOST_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "The program varrow, for runs of programs that use libvarrow.")

include(CPack)

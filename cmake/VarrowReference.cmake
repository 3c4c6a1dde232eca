# `cmake --build ... --target reference` writes the public headers as HTML to reference/html in the
# build directory. Fails when a public name is undocumented or wrongly documented.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()
find_package(Doxygen QUIET)
if(NOT DOXYGEN_FOUND)
  return()
endif()

set(DOXYGEN_PROJECT_NUMBER ${PROJECT_VERSION})
set(DOXYGEN_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/reference")
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE "${PROJECT_SOURCE_DIR}/docs/reference.md")
set(DOXYGEN_STRIP_FROM_PATH "${PROJECT_SOURCE_DIR}/include" "${PROJECT_SOURCE_DIR}/3pp/cppbind/include"
                            "${PROJECT_BINARY_DIR}/generated")
set(DOXYGEN_STRIP_FROM_INC_PATH ${DOXYGEN_STRIP_FROM_PATH})
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_GENERATE_LATEX NO)
set(DOXYGEN_QUIET YES)

set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_DISTRIBUTE_GROUP_DOC YES)
set(DOXYGEN_EXTRACT_ALL NO)
set(DOXYGEN_HIDE_UNDOC_RELATIONS YES)
set(DOXYGEN_WARN_IF_UNDOCUMENTED YES)
set(DOXYGEN_WARN_NO_PARAMDOC NO)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)

# The plain comment that opens a header becomes the description of the file. Defaulted copy and move
# operations need no documentation.
set(DOXYGEN_ALIASES "opening=@file^^@brief")
string(
  CONCAT DOXYGEN_INPUT_FILTER
         "sed -E -e '1,/^#pragma/s,^// ,/// ,' -e '1s,^///,/// @opening,'"
         " -e 's,^.*&( other)?[)] = default.$,,'")

set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED "LIBVARROW_API=" "LIBVARROW_VISIBLE_TYPE=" "LIBVARROW_HOST_API=" "CPPBIND_API="
                       "LIBVARROW_PRINTF_LIKE(a,b)=" "CPPBIND_PRINTF_LIKE(a,b)=")
# FieldCodec: a host needs the primary template only; Binder lists the kinds of fields.
set(DOXYGEN_EXCLUDE_SYMBOLS "*::detail" "*::detail::*" "cppbind::FieldCodec<*" "boost" "boost::*")

doxygen_add_docs(
  reference
  "${PROJECT_SOURCE_DIR}/include/libvarrow"
  "${PROJECT_SOURCE_DIR}/3pp/cppbind/include/cppbind"
  "${PROJECT_BINARY_DIR}/generated/libvarrow/version.h"
  "${PROJECT_SOURCE_DIR}/docs/reference.md"
  COMMENT "Writing the reference to ${PROJECT_BINARY_DIR}/reference/html")

# Finds the libraries that varrow calls, each as an imported target.
find_package(Boost 1.74 REQUIRED COMPONENTS date_time filesystem locale thread)
find_package(Poco 1.11 REQUIRED COMPONENTS Foundation)
find_package(OpenMP REQUIRED)
find_package(Threads REQUIRED)

find_package(jsoncpp 1.9.5 REQUIRED)
find_package(log4cplus 2.0 REQUIRED)

include(VarrowNarrowPoco)

# varrow_stacktrace: reads call stacks and names their frames.
add_library(varrow_stacktrace INTERFACE)
if(WIN32)
  # Header-only, with the debug engine. Boost only chooses it itself with Visual C++.
  target_compile_definitions(varrow_stacktrace INTERFACE BOOST_STACKTRACE_USE_WINDBG)
  target_link_libraries(varrow_stacktrace INTERFACE dbgeng dbghelp ole32)
else()
  find_package(Boost 1.74 REQUIRED COMPONENTS stacktrace_backtrace)
  target_compile_definitions(varrow_stacktrace INTERFACE BOOST_STACKTRACE_LINK)
  target_link_libraries(varrow_stacktrace INTERFACE Boost::stacktrace_backtrace ${CMAKE_DL_LIBS})
endif()

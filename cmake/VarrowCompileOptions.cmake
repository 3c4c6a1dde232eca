# varrow_compile_options(target): warnings as errors, sanitizers, and source paths relative to the
# tree in assertions and log lines, so that binaries contain no paths of the build machine.
function(varrow_compile_options target)
  if(MSVC)
    # Warnings are no errors, since CI does not build with this compiler. C4251 and C4275 warn of
    # classes of the standard library in exported classes; all modules share its library.
    target_compile_options(${target} PRIVATE /W4 /wd4251 /wd4275 /utf-8 /bigobj)
    target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS)
  else()
    target_compile_options(
      ${target}
      PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2 -Werror
              "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")
  endif()
  if(VARROW_COVERAGE)
    # Counters are in a mapped file, so that a process that aborts is counted, too.
    set(coverage -fprofile-instr-generate -fcoverage-mapping)
    target_compile_options(${target} PRIVATE ${coverage} -mllvm -runtime-counter-relocation)
    target_link_options(${target} PRIVATE ${coverage})
  endif()
  if(VARROW_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${VARROW_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${VARROW_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # In instrumented code GCC reports false positives inside the standard library.
      target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
    if(VARROW_SANITIZE MATCHES "undefined")
      target_compile_options(${target} PRIVATE -fno-sanitize-recover=all)
    endif()
  endif()
endfunction()

# varrow_compile_options(target): warnings as errors, sanitizers, and source paths relative to the
# tree in assertions and log lines, so that no build machine's folders stand in a binary.
function(varrow_compile_options target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /utf-8)
  else()
    target_compile_options(
      ${target}
      PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2 -Werror
              "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")
  endif()
  if(VARROW_COVERAGE)
    # Counters live in a mapped file, so that a process which aborts has counted too.
    set(coverage -fprofile-instr-generate -fcoverage-mapping)
    target_compile_options(${target} PRIVATE ${coverage} -mllvm -runtime-counter-relocation)
    target_link_options(${target} PRIVATE ${coverage})
  endif()
  if(VARROW_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${VARROW_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${VARROW_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # Instrumented code makes GCC report it inside the standard library, where nothing is wrong.
      target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
    if(VARROW_SANITIZE MATCHES "undefined")
      target_compile_options(${target} PRIVATE -fno-sanitize-recover=all)
    endif()
  endif()
endfunction()

# Our own code builds with warnings as errors.
function(norvane_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
  if(NORVANE_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12's flow analysis reports std::variant members as maybe-uninitialized once sanitizer
    # instrumentation is inlined; the normal build keeps the check.
    target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
  endif()
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
    # GCC notes that a parameter's passing changed in GCC 7.1; everything here is built by one
    # compiler, so the note tells nothing.
    target_compile_options(${target} PRIVATE -Wno-psabi)
  endif()
  if("thread" IN_LIST NORVANE_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Boost.Asio's atomic fences (the console's network code) are beyond ThreadSanitizer's model;
    # GCC says so for every use.
    target_compile_options(${target} PRIVATE -Wno-tsan)
  endif()
endfunction()

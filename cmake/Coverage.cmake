# Line and branch coverage of every target of this build with gcov (checks/coverage.sh): counted
# without optimisation, so that each line and branch of the source is one the program runs, and
# with atomic counters, since the plug-in's threads run the same lines at once.
option(NORVANE_COVERAGE "Instrument the whole build for gcov" OFF)
if(NORVANE_COVERAGE)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    message(FATAL_ERROR "NORVANE_COVERAGE is measured with gcov: build with GCC")
  endif()
  add_compile_options(--coverage -fprofile-update=atomic -O0)
  add_link_options(--coverage)
endif()

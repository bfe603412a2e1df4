# Our own code builds with warnings as errors.
function(norvane_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()

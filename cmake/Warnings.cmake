# Warnings are errors, except where another project builds us as a subproject, perhaps with a newer compiler
# that has more warnings. Consumers never inherit these flags.
function(zvutilib_strict_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

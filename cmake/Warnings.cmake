# Warnings are errors in everything of ours, but not where a foreign project, maybe with a compiler that
# knows more of them, builds us as a part of it. Consumers are never given these flags.
function(zvutilib_strict_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

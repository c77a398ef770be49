# Flags that make a fault harder to exploit. ./run package reads them back from what was built.
#
# Stack protector and _FORTIFY_SOURCE end the program where a buffer on the stack was overrun. Sanitizers replace the
# functions that _FORTIFY_SOURCE checks, and look further. On Windows the code for both is linked into each program and
# DLL, so that no further runtime library has to be there.
function(zvutilib_harden target)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    return()
  endif()
  target_compile_definitions(${target} PRIVATE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
  if(NOT ZVUTILIB_SANITIZE)
    target_compile_options(${target} PRIVATE -fstack-protector-strong
      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE$<SEMICOLON>-D_FORTIFY_SOURCE=2>)
  endif()
endfunction()

# For shared libraries and programs. No code of the DLL handles the system's structured exceptions (NO_SEH), and without
# a time stamp two builds give the same bytes.
function(zvutilib_harden_link target)
  if(MINGW)
    target_link_options(${target} PRIVATE -Wl,--no-seh -Wl,--dynamicbase -Wl,--nxcompat -Wl,--no-insert-timestamp)
  elseif(NOT APPLE)
    target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now)
  endif()
endfunction()

# What every target of the project is compiled with. Warnings are errors.
add_library(vantrelix_options INTERFACE)
target_compile_options(vantrelix_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
  -Wunused -Wnull-dereference -Wdouble-promotion -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 reports these from inside its own standard library when it inlines.
  target_compile_options(vantrelix_options INTERFACE -Wno-null-dereference -Wno-restrict)
endif()
if(VANTRELIX_SANITIZE)
  target_compile_options(vantrelix_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vantrelix_options INTERFACE -fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented code makes g++ 12 see std::variant members as uninitialised.
    target_compile_options(vantrelix_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(VANTRELIX_WITH_FUZZERS)
  # The library's own branches are what guides the fuzzer.
  target_compile_options(vantrelix_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

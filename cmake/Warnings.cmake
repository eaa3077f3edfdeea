# Every warning is an error, on GCC 12 and Clang 19 alike.
add_library(trovel_warnings INTERFACE)
target_compile_options(trovel_warnings INTERFACE
  -Wall -Wextra -Werror -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Wswitch-enum
  -Wnull-dereference -Wformat=2)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # Clang sees a deprecated call inside the standard library's own stable_sort.
  target_compile_options(trovel_warnings INTERFACE
    -Wextra-semi -Wunused-member-function -Wno-deprecated-declarations)
else()
  # GCC 12 sees null dereferences and uninitialised reads in the standard library's inlined code.
  target_compile_options(trovel_warnings INTERFACE -Wno-null-dereference -Wno-maybe-uninitialized)
endif()

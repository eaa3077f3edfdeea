# Every warning is an error, on GCC 12 and Clang 19 alike.
set(TROVEL_WARNINGS
  -Wall -Wextra -Werror -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Wswitch-enum
  -Wnull-dereference -Wformat=2)
set(TROVEL_CLANG_WARNINGS -Wextra-semi -Wunused-member-function)
add_library(trovel_warnings INTERFACE)
target_compile_options(trovel_warnings INTERFACE ${TROVEL_WARNINGS})
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  target_compile_options(trovel_warnings INTERFACE ${TROVEL_CLANG_WARNINGS})
  if(NOT APPLE)
    # Clang sees a deprecated call inside GCC's own stable_sort.
    target_compile_options(trovel_warnings INTERFACE -Wno-deprecated-declarations)
  endif()
else()
  # GCC 12 sees null dereferences and uninitialised reads in the standard library's inlined code.
  target_compile_options(trovel_warnings INTERFACE -Wno-null-dereference -Wno-maybe-uninitialized)
endif()

# No warning on GCC 12, Clang 19 and the workflow's Xcode. Whoever builds with another compiler or a
# newer SDK may get some, which stop nobody.
option(TROVEL_WARNINGS_AS_ERRORS "Fail the build on a warning" OFF)
set(TROVEL_WARNINGS
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Wswitch-enum
  -Wnull-dereference -Wformat=2)
set(TROVEL_CLANG_WARNINGS -Wextra-semi -Wunused-member-function)
add_library(trovel_warnings INTERFACE)
target_compile_options(trovel_warnings INTERFACE ${TROVEL_WARNINGS})
if(TROVEL_WARNINGS_AS_ERRORS)
  target_compile_options(trovel_warnings INTERFACE -Werror)
endif()
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
